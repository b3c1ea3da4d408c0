#pragma once

#include <QPointer>
#include <QPushButton>

#include "document/Source.h"


namespace orvane {

class ConfirmDialog;

class SymbolButton;

// One line of the sidebar's source list: symbol, name and type; a delete
// button while hovered, behind a confirmation.
class SourceRowView : public QPushButton {
    Q_OBJECT

public:
    SourceRowView(const Source& source, bool isSelected, QWidget* parent = nullptr);

    const Source& source() const { return source_; }
    bool isSelected() const { return isSelected_; }
    bool isDeleteButtonVisible() const;
    static const char* symbolFor(SourceType type);
    static QString typeTitle(SourceType type);

    // Opens the "Delete Source" alert; its "Delete" emits deleteRequested.
    ConfirmDialog* confirmDelete();

signals:
    void selectRequested(const orvane::Uuid& id);
    void deleteRequested(const orvane::Uuid& id);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void setHovering(bool hovering);

    Source source_;
    bool isSelected_ = false;
    bool isHovering_ = false;
    SymbolButton* trash_ = nullptr;
    QPointer<ConfirmDialog> confirmation_;
};

}  // namespace orvane
