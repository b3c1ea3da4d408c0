#pragma once

#include <QDialog>
#include <QPointer>

#include "engine/StreamManager.h"

#include "document/TeleprompterConfig.h"

class QCheckBox;
class QFormLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QSlider;

namespace orvane {

class TeleprompterManager;

class ColorWellButton;

// The teleprompter's settings sheet. It edits a working copy; nothing is
// stored until "Save Changes", and the sheet stays open after saving.
class TeleprompterConfigView : public QDialog {
    Q_OBJECT
public:
    // Hidden from screen sharing cannot be honoured on this display server.
    static constexpr const char* unsupportedHint = "Not supported by this display server";

    // `manager`, when there is one, re-applies the window level after a save.
    TeleprompterConfigView(StreamManager& streamManager, const TeleprompterConfig& config,
                           TeleprompterManager* manager = nullptr, QWidget* parent = nullptr);

    const TeleprompterConfig& config() const { return config_; }
    bool hasChanges() const { return hasChanges_; }
    bool showsSaveConfirmation() const { return showSaveConfirmation_; }

public slots:
    void resetToDefaults();
    void saveConfiguration();

private:
    void build();
    void showConfig();  // puts the working copy into the controls
    void changed();
    QSlider* addSlider(QFormLayout* form, const QString& label, int min, int max, QLabel** readout);

    QPointer<StreamManager> streamManager_;
    QPointer<TeleprompterManager> manager_;
    TeleprompterConfig config_;
    bool hasChanges_ = false;
    bool showSaveConfirmation_ = false;
    bool loading_ = false;

    QCheckBox* enabled_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
    QSlider* fontSize_ = nullptr;
    QLabel* fontSizeValue_ = nullptr;
    QSlider* opacity_ = nullptr;
    QLabel* opacityValue_ = nullptr;
    ColorWellButton* textColor_ = nullptr;
    ColorWellButton* backgroundColor_ = nullptr;
    QCheckBox* alwaysOnTop_ = nullptr;
    QCheckBox* hideFromShare_ = nullptr;
    QSlider* width_ = nullptr;
    QLabel* widthValue_ = nullptr;
    QSlider* height_ = nullptr;
    QLabel* heightValue_ = nullptr;
    QCheckBox* autoScroll_ = nullptr;
    QSlider* speed_ = nullptr;
    QLabel* speedValue_ = nullptr;
    QLabel* saved_ = nullptr;
    QPushButton* save_ = nullptr;
};

}  // namespace orvane
