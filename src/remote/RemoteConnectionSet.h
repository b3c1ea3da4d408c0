#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "remote/RemoteAction.h"
#include "remote/RemoteServerLimits.h"

namespace orvane {

class RemoteSnapshotStore;

// The accepted connections, on the server thread. Each gets a single
// receive of at most 8,192 bytes, one reply in one send, then close. A
// request that came in with its connection, and a reply the socket takes
// whole, which is nearly every one, are served at once. A connection that
// makes the server wait (nothing to read yet, or the rest of a long reply)
// takes one of 64 slots; the slots share one epoll descriptor, one socket
// notifier and one idle timer, so that no connection costs an object, a
// timer, a deferred delete or a registration with the event loop.
class RemoteConnectionSet : public QObject {
    Q_OBJECT
public:
    using ActionSink = std::function<void(const RemoteAction&)>;

    RemoteConnectionSet(std::shared_ptr<const RemoteSnapshotStore> store, ActionSink sink,
                        QObject* parent = nullptr);
    ~RemoteConnectionSet() override;  // closes what is still open

    // Takes over an accepted descriptor. With every slot taken it is
    // closed at once, unread.
    void serve(qintptr descriptor);

private:
    using Clock = std::chrono::steady_clock;

    struct Slot {
        int fd = -1;  // -1: free
        bool answered = false;
        bool peerClosed = false;     // nothing more to drain
        std::string rest;            // what the socket has not taken yet of the reply
        Clock::time_point deadline;  // closed then, answered or not
    };

    void wait(int fd, std::string rest);
    void onReady();
    void onReadable(Slot& slot);
    void onWritable(Slot& slot);
    void sendLater(Slot& slot, std::string rest);
    void release(Slot& slot);
    void watch(const Slot& slot, int operation);
    void onIdleTimeout();
    void armIdleTimer();

    std::shared_ptr<const RemoteSnapshotStore> store_;
    ActionSink sink_;
    int epoll_ = -1;
    std::unique_ptr<QSocketNotifier> readyNotifier_;  // on epoll_
    QTimer idleTimer_;  // due at the earliest deadline of a taken slot
    std::array<Slot, remote_limits::kMaxConnections> slots_;
    int taken_ = 0;
};

}  // namespace orvane
