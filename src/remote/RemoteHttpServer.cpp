#include "remote/RemoteHttpServer.h"

#include <QHostAddress>

#include "remote/RemoteServerLimits.h"
#include "remote/RemoteTcpListener.h"

namespace orvane {

RemoteHttpServer::RemoteHttpServer(std::shared_ptr<const RemoteSnapshotStore> store,
                                   RemoteConnectionSet::ActionSink sink, QObject* parent)
    : QObject(parent), store_(std::move(store)), sink_(std::move(sink)) {}

void RemoteHttpServer::listen(quint16 port, int generation) {
    if (listener_ && listener_->isListening()) {
        emit listenFinished(generation, true, listener_->serverPort(), {});
        return;
    }
    if (!listener_) {
        connections_ = new RemoteConnectionSet(store_, sink_, this);
        listener_ = new RemoteTcpListener(this);
        connect(listener_, &RemoteTcpListener::descriptorAccepted, this, &RemoteHttpServer::handleConnection);
    }
    // QTcpServer sets SO_REUSEADDR on Unix, so a port in TIME_WAIT is free again.
    listener_->setListenBacklogSize(remote_limits::kListenBacklog);
    if (!listener_->listen(QHostAddress::Any, port)) {
        emit listenFinished(generation, false, port, listener_->errorString());
        return;
    }
    emit listenFinished(generation, true, listener_->serverPort(), {});
}

void RemoteHttpServer::close() {
    // Connections already accepted are not touched: each still gets its reply.
    if (listener_) listener_->close();
}

void RemoteHttpServer::handleConnection(qintptr descriptor) { connections_->serve(descriptor); }

}  // namespace orvane
