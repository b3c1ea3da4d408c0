#pragma once

#include <QPushButton>

#include "document/Preset.h"


namespace orvane {

class ConfirmDialog;

class SymbolButton;

// One stored preset on the preset screen: name, scene count and the first
// scene names. A click chooses it; the trash asks before deleting.
class PresetCard : public QPushButton {
    Q_OBJECT

public:
    explicit PresetCard(const Preset& preset, QWidget* parent = nullptr);

    const Preset& preset() const { return preset_; }
    // "1 scene" or "N scenes".
    static QString sceneCountText(std::size_t count);
    // The line under the first three scene names, empty with three or fewer.
    static QString remainderText(std::size_t count);

    // Opens the confirmation; "Delete" emits deleteRequested.
    void confirmDelete();
    ConfirmDialog* deleteConfirmation() const { return confirmation_; }
    QSize sizeHint() const override;

signals:
    void selectRequested(const orvane::Preset& preset);
    void deleteRequested(const orvane::Preset& preset);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    Preset preset_;
    SymbolButton* trash_ = nullptr;
    ConfirmDialog* confirmation_ = nullptr;
    bool hovered_ = false;
};

}  // namespace orvane
