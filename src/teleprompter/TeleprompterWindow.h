#pragma once

#include <QWidget>

class QSettings;

namespace orvane {

class TeleprompterManager;
class TeleprompterWindowView;

// The floating window that holds the script. It opens at the settings' size,
// centred, unless a frame was saved earlier under its name; its background
// is left clear so that the script's own colour and opacity decide what
// shows through. Closing by its title bar is reported to the manager.
class TeleprompterWindow : public QWidget {
    Q_OBJECT
public:
    TeleprompterWindow(TeleprompterManager& manager, QSize contentSize, QSettings& settings);
    ~TeleprompterWindow() override;

    void bringToFront();
    void setAlwaysOnTop(bool onTop);
    TeleprompterWindowView* view() const { return view_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void saveFrame();

    TeleprompterManager& manager_;
    QSettings& settings_;
    TeleprompterWindowView* view_ = nullptr;
    bool reported_ = false;
};

}  // namespace orvane
