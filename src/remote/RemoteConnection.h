#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

#include "remote/RemoteAction.h"

class QTcpSocket;

namespace orvane {

class RemoteSnapshotStore;

// One request on one TCP connection, on the server thread: a single receive
// of at most 8,192 bytes, one reply, then close. Deletes itself when done.
class RemoteConnection : public QObject {
    Q_OBJECT
public:
    using ActionSink = std::function<void(const RemoteAction&)>;

    RemoteConnection(qintptr descriptor, std::shared_ptr<const RemoteSnapshotStore> store, ActionSink sink,
                     QObject* parent = nullptr);

private:
    void onReadyRead();
    void finish();

    QTcpSocket* socket_;
    QTimer idleTimer_;  // closes a silent connection, and one whose reply never drains
    std::shared_ptr<const RemoteSnapshotStore> store_;
    ActionSink sink_;
    bool answered_ = false;
    bool finished_ = false;
};

}  // namespace orvane
