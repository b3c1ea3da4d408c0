#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>



namespace orvane {

// The main window's two special modes: floating above other windows, and
// being visible to screen sharing. Neither has a compositor-independent
// meaning for sharing on X11 or Wayland, so that flag is kept and logged.
class WindowManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isAlwaysOnTop READ isAlwaysOnTop WRITE setIsAlwaysOnTop NOTIFY isAlwaysOnTopChanged)
    Q_PROPERTY(bool isVisibleInScreenShare READ isVisibleInScreenShare WRITE setIsVisibleInScreenShare NOTIFY
                   isVisibleInScreenShareChanged)

public:
    static constexpr const char* sharingUnsupportedHint = "Not supported by this display server";

    explicit WindowManager(QObject* parent = nullptr);

    bool isAlwaysOnTop() const { return isAlwaysOnTop_; }
    void setIsAlwaysOnTop(bool onTop);
    bool isVisibleInScreenShare() const { return isVisibleInScreenShare_; }
    void setIsVisibleInScreenShare(bool visible);

    // Remembers the first window (queued, as the window may not exist yet)
    // and applies both modes to it.
    void setupMainWindow(QWidget* window);
    QWidget* mainWindow() const { return mainWindow_; }

    void updateWindowLevel();
    void updateSharingType();

signals:
    void isAlwaysOnTopChanged(bool onTop);
    void isVisibleInScreenShareChanged(bool visible);

private:
    bool isAlwaysOnTop_ = false;
    bool isVisibleInScreenShare_ = false;
    QPointer<QWidget> mainWindow_;  // weak: the window may go first
};

}  // namespace orvane
