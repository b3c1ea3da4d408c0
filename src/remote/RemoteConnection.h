#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "remote/RemoteAction.h"

namespace orvane {

class RemoteSnapshotStore;

// One request on one TCP connection, on the server thread: a single receive
// of at most 8,192 bytes, one reply, then close. Works on the accepted
// descriptor directly. A request that came in with the connection and a
// reply the socket takes whole, which is nearly every one, are served by
// serve() on the spot, without any object; only a connection that makes the
// server wait gets one, and it deletes itself when done.
class RemoteConnection : public QObject {
    Q_OBJECT
public:
    using ActionSink = std::function<void(const RemoteAction&)>;

    // Takes over `descriptor`. Returns the object that finishes the
    // connection later, or null when it is finished already.
    static RemoteConnection* serve(qintptr descriptor, const std::shared_ptr<const RemoteSnapshotStore>& store,
                                   const ActionSink& sink, QObject* parent);

    ~RemoteConnection() override;

signals:
    // Emitted once, when the descriptor is closed.
    void closed();

private:
    RemoteConnection(int fd, std::shared_ptr<const RemoteSnapshotStore> store, ActionSink sink, QObject* parent);

    void awaitRequest();
    void sendRest(std::string rest);
    void onReadable();
    void onWritable();
    void finish();
    void watch(std::unique_ptr<QSocketNotifier>& notifier, QSocketNotifier::Type type, void (RemoteConnection::*slot)());

    int fd_;
    std::unique_ptr<QSocketNotifier> readNotifier_;
    std::unique_ptr<QSocketNotifier> writeNotifier_;
    QTimer idleTimer_;  // closes a silent connection, and one whose reply never drains
    std::shared_ptr<const RemoteSnapshotStore> store_;
    ActionSink sink_;
    std::string rest_;  // what the socket has not taken yet of the reply
    bool answered_ = false;
    bool done_ = false;
};

}  // namespace orvane
