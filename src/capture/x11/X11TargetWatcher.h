#pragma once

#include <QObject>

#include <cstdint>
#include <memory>

class QSocketNotifier;

namespace orvane {

class XcbConnection;

// Says when what can be captured may have changed: monitors added, removed
// or moved (RandR screen, CRTC and output changes, and the root window
// reconfigured, which is how the server announces a monitor set or deleted)
// and windows opened or closed (the window manager rewrites
// _NET_CLIENT_LIST on the root window). A burst of such events is one
// targetsChanged() on the next turn of the event loop.
//
// Main thread, with an X connection of its own to $DISPLAY. Without a
// server it stays inactive and silent; when its server goes away it stops
// listening for good, with one log line.
class X11TargetWatcher : public QObject {
    Q_OBJECT

public:
    explicit X11TargetWatcher(QObject* parent = nullptr);
    ~X11TargetWatcher() override;

    bool isActive() const { return connection_ != nullptr; }

signals:
    void targetsChanged();

private:
    void readEvents();
    void announce();
    void stop();

    std::unique_ptr<XcbConnection> connection_;  // null while inactive
    QSocketNotifier* notifier_ = nullptr;
    int randrEventBase_ = -1;  // -1: the server has no RandR
    std::uint32_t clientListAtom_ = 0;
    bool announcing_ = false;  // a targetsChanged() is queued
};

}  // namespace orvane
