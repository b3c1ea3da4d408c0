#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "remote/RemoteConnectionSet.h"

namespace orvane {

class RemoteSnapshotStore;
class RemoteTcpListener;

// The listening side, living on the server thread: accepts connections on
// all interfaces and hands each to the connection set, which serves at most
// 64 at a time and closes any beyond that at once. Driven by queued calls
// from WebServerManager.
class RemoteHttpServer : public QObject {
    Q_OBJECT
public:
    RemoteHttpServer(std::shared_ptr<const RemoteSnapshotStore> store, RemoteConnectionSet::ActionSink sink,
                     QObject* parent = nullptr);

    // `generation` identifies the start request, so that an answer that
    // arrives after a later stop can be told apart.
    void listen(quint16 port, int generation);
    void close();

signals:
    void listenFinished(int generation, bool ok, quint16 port, const QString& error);

private:
    void handleConnection(qintptr descriptor);

    // Both made on the server thread, at the first listen.
    RemoteTcpListener* listener_ = nullptr;
    RemoteConnectionSet* connections_ = nullptr;
    std::shared_ptr<const RemoteSnapshotStore> store_;
    RemoteConnectionSet::ActionSink sink_;
};

}  // namespace orvane
