#pragma once

#include <QPointer>
#include <QWidget>

#include "engine/StreamManager.h"
#include "teleprompter/TeleprompterManager.h"

class QCheckBox;
class QDialog;
class QLabel;
class QPushButton;

namespace orvane {


// The teleprompter block of the configuration sidebar: the switch that
// enables it in the preset, the button that opens and closes the window,
// the settings sheet, a read-out of the look and a preview of the text.
class TeleprompterSection : public QWidget {
    Q_OBJECT
public:
    TeleprompterSection(StreamManager& streamManager, TeleprompterManager& manager, QWidget* parent = nullptr);

    QCheckBox* enableSwitch() const { return enable_; }
    QPushButton* windowButton() const { return window_; }
    QPushButton* settingsButton() const { return settings_; }
    // The settings sheet while it is open.
    QDialog* configSheet() const { return sheet_; }

public slots:
    void setEnabledInPreset(bool enabled);
    void openConfigSheet();

private:
    void refresh();

    QPointer<StreamManager> streamManager_;
    QPointer<TeleprompterManager> manager_;
    QCheckBox* enable_ = nullptr;
    QWidget* details_ = nullptr;
    QPushButton* window_ = nullptr;
    QPushButton* settings_ = nullptr;
    QLabel* opacity_ = nullptr;
    QLabel* onTop_ = nullptr;
    QLabel* share_ = nullptr;
    QLabel* shareIcon_ = nullptr;
    QLabel* previewTitle_ = nullptr;
    QLabel* preview_ = nullptr;
    QPointer<QDialog> sheet_;
};

}  // namespace orvane
