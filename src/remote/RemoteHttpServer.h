#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "remote/RemoteConnection.h"

namespace orvane {

class RemoteSnapshotStore;
class RemoteTcpListener;

// The listening side, living on the server thread: accepts connections on
// all interfaces, serves at most 64 at a time and closes any beyond that at
// once. Driven by queued calls from WebServerManager.
class RemoteHttpServer : public QObject {
    Q_OBJECT
public:
    RemoteHttpServer(std::shared_ptr<const RemoteSnapshotStore> store, RemoteConnection::ActionSink sink,
                     QObject* parent = nullptr);

    // `generation` identifies the start request, so that an answer that
    // arrives after a later stop can be told apart.
    void listen(quint16 port, int generation);
    void close();

signals:
    void listenFinished(int generation, bool ok, quint16 port, const QString& error);

private:
    void handleConnection(qintptr descriptor);

    RemoteTcpListener* listener_ = nullptr;
    std::shared_ptr<const RemoteSnapshotStore> store_;
    RemoteConnection::ActionSink sink_;
    int openConnections_ = 0;
};

}  // namespace orvane
