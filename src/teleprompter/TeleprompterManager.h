#pragma once

#include <QObject>
#include <QPointer>

#include "engine/StreamManager.h"

class QWidget;

namespace orvane {

class ScrollTicker;
class TeleprompterWindow;

// Owns the floating script window and the clock that moves its text. The
// settings come from the open preset every time they are needed; the
// manager keeps no copy. Main thread only.
class TeleprompterManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isTeleprompterWindowOpen READ isTeleprompterWindowOpen NOTIFY isTeleprompterWindowOpenChanged)
    Q_PROPERTY(double scrollOffset READ scrollOffset WRITE setScrollOffset NOTIFY scrollOffsetChanged)
    Q_PROPERTY(bool isScrolling READ isScrolling NOTIFY isScrollingChanged)

public:
    static constexpr const char* windowTitle = "Teleprompter";
    static constexpr const char* windowFrameName = "TeleprompterWindow";
    // Points per second at speed 1.0.
    static constexpr double pointsPerSecondAtSpeedOne = 30.0;

    explicit TeleprompterManager(StreamManager& streamManager, QObject* parent = nullptr);
    ~TeleprompterManager() override;

    bool isTeleprompterWindowOpen() const { return isTeleprompterWindowOpen_; }
    double scrollOffset() const { return scrollOffset_; }
    void setScrollOffset(double offset);
    bool isScrolling() const { return isScrolling_; }

    StreamManager* streamManager() const { return streamManager_; }
    QWidget* teleprompterWindow() const;

public slots:
    void openTeleprompterWindow();
    void closeTeleprompterWindow();
    // Re-applies the always-on-top and screen-share settings to an open window.
    void updateWindowLevel();
    void startScrolling();
    void stopScrolling();
    // The window reports its own closing here; any other window is ignored.
    void windowWillClose(QWidget* window);

signals:
    void isTeleprompterWindowOpenChanged(bool open);
    void scrollOffsetChanged(double offset);
    void isScrollingChanged(bool scrolling);

private:
    void setWindowOpen(bool open);
    void setScrolling(bool scrolling);
    void applyLevel(bool alwaysOnTop);

    QPointer<StreamManager> streamManager_;
    QPointer<TeleprompterWindow> window_;
    ScrollTicker* ticker_ = nullptr;  // child; runs while scrolling
    double pointsPerTick_ = 0;
    bool isTeleprompterWindowOpen_ = false;
    double scrollOffset_ = 0;
    bool isScrolling_ = false;
};

}  // namespace orvane
