#pragma once

#include <QPointer>
#include <QWidget>

#include "document/Source.h"

namespace orvane {

class ConfirmDialog;
class SymbolButton;

// One source in the source manager: symbol, name and type, and while the
// row is hovered (or has the keyboard) a delete button behind a question.
class SourceItemView : public QWidget {
    Q_OBJECT

public:
    explicit SourceItemView(const Source& source, QWidget* parent = nullptr);

    const Source& source() const { return source_; }
    bool isDeleteButtonVisible() const;
    SymbolButton* deleteButton() const { return trash_; }
    static const char* symbolFor(SourceType type);
    static QString typeTitle(SourceType type);
    static QString deleteMessage(const std::string& name);

    // Opens the "Delete Source" question; its "Delete" emits deleteRequested.
    ConfirmDialog* confirmDelete();

signals:
    void deleteRequested(const orvane::Uuid& id);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setHovering(bool hovering);
    void placeTrash();

    Source source_;
    bool isHovering_ = false;
    SymbolButton* trash_ = nullptr;
    QPointer<ConfirmDialog> confirmation_;
};

}  // namespace orvane
