#include "remote/RemoteConnection.h"

#include <QTcpSocket>

#include "remote/RemoteServerLimits.h"
#include "remote/RemoteSnapshotStore.h"
#include "remote/RequestProcessor.h"

namespace orvane {

RemoteConnection::RemoteConnection(qintptr descriptor, std::shared_ptr<const RemoteSnapshotStore> store,
                                   ActionSink sink, QObject* parent)
    : QObject(parent), socket_(new QTcpSocket(this)), store_(std::move(store)), sink_(std::move(sink)) {
    idleTimer_.setSingleShot(true);
    idleTimer_.setTimerType(Qt::PreciseTimer);  // a coarse timer may fire 5% early
    idleTimer_.setInterval(remote_limits::kIdleTimeout);
    connect(&idleTimer_, &QTimer::timeout, this, [this] {
        socket_->abort();
        finish();
    });
    connect(socket_, &QTcpSocket::readyRead, this, &RemoteConnection::onReadyRead);
    connect(socket_, &QTcpSocket::disconnected, this, &RemoteConnection::finish);
    connect(socket_, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError) {
        // A reset or a refused write ends the connection; it is never retried.
        if (socket_->state() == QAbstractSocket::UnconnectedState) finish();
    });

    if (!socket_->setSocketDescriptor(descriptor)) {
        QMetaObject::invokeMethod(this, &RemoteConnection::finish, Qt::QueuedConnection);
        return;
    }
    idleTimer_.start();
}

void RemoteConnection::onReadyRead() {
    if (answered_) {
        // Whatever follows the first receive is never looked at; it is only
        // drained so that closing sends FIN rather than a reset.
        socket_->skip(socket_->bytesAvailable());
        return;
    }
    answered_ = true;
    const QByteArray bytes = socket_->read(static_cast<qint64>(remote_limits::kMaxRequestBytes));
    socket_->skip(socket_->bytesAvailable());

    const auto session = store_->current();
    const RemoteReply reply = processRequestBytes(std::string_view(bytes.constData(), bytes.size()), session.get());
    if (reply.action && sink_) sink_(*reply.action);

    socket_->write(reply.response.data(), static_cast<qint64>(reply.response.size()));
    idleTimer_.start();  // from now on it guards the drain of the reply
    socket_->disconnectFromHost();
}

void RemoteConnection::finish() {
    if (finished_) return;
    finished_ = true;
    idleTimer_.stop();
    deleteLater();
}

}  // namespace orvane
