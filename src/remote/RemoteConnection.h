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
// descriptor directly, which keeps a request to one or two turns of the
// server's loop. Deletes itself when done.
class RemoteConnection : public QObject {
    Q_OBJECT
public:
    using ActionSink = std::function<void(const RemoteAction&)>;

    RemoteConnection(qintptr descriptor, std::shared_ptr<const RemoteSnapshotStore> store, ActionSink sink,
                     QObject* parent = nullptr);
    ~RemoteConnection() override;

    // Arms the idle timer and takes the request if it is there already.
    void start();

signals:
    // Emitted once, when the descriptor is closed.
    void closed();

private:
    void onReadable();
    void onWritable();
    void answer(std::string_view request);
    bool drainInput();  // false once the peer has closed or failed
    void finish();
    void watch(std::unique_ptr<QSocketNotifier>& notifier, QSocketNotifier::Type type, void (RemoteConnection::*slot)());

    int fd_;
    // Made when first needed: most requests are answered before either is.
    std::unique_ptr<QSocketNotifier> readNotifier_;
    std::unique_ptr<QSocketNotifier> writeNotifier_;
    QTimer idleTimer_;  // closes a silent connection, and one whose reply never drains
    std::shared_ptr<const RemoteSnapshotStore> store_;
    ActionSink sink_;
    std::string reply_;
    std::size_t sent_ = 0;
    bool answered_ = false;
    bool done_ = false;
};

}  // namespace orvane
