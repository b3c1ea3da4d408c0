#include "remote/RemoteConnection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

#include "remote/RemoteServerLimits.h"
#include "remote/RemoteSnapshotStore.h"
#include "remote/RequestProcessor.h"

namespace orvane {

RemoteConnection::RemoteConnection(qintptr descriptor, std::shared_ptr<const RemoteSnapshotStore> store,
                                   ActionSink sink, QObject* parent)
    : QObject(parent),
      fd_(static_cast<int>(descriptor)),
      store_(std::move(store)),
      sink_(std::move(sink)) {
    ::fcntl(fd_, F_SETFL, ::fcntl(fd_, F_GETFL) | O_NONBLOCK);
    idleTimer_.setSingleShot(true);
    idleTimer_.setTimerType(Qt::PreciseTimer);  // a coarse timer may fire 5% early
    idleTimer_.setInterval(remote_limits::kIdleTimeout);
    connect(&idleTimer_, &QTimer::timeout, this, &RemoteConnection::finish);
}

void RemoteConnection::start() {
    idleTimer_.start();
    // The request has often arrived with the connection already.
    onReadable();
    if (!done_ && !answered_) watch(readNotifier_, QSocketNotifier::Read, &RemoteConnection::onReadable);
}

void RemoteConnection::watch(std::unique_ptr<QSocketNotifier>& notifier, QSocketNotifier::Type type,
                             void (RemoteConnection::*slot)()) {
    if (!notifier) {
        notifier = std::make_unique<QSocketNotifier>(fd_, type);
        connect(notifier.get(), &QSocketNotifier::activated, this, slot);
    }
    notifier->setEnabled(true);
}

RemoteConnection::~RemoteConnection() {
    if (fd_ >= 0) ::close(fd_);
}

void RemoteConnection::onReadable() {
    if (done_) return;
    if (answered_) {
        // Whatever follows the first receive is never looked at; it is only
        // drained so that closing sends FIN rather than a reset. Once the
        // peer has closed its side the descriptor stays readable, so stop
        // listening and let the write side finish.
        if (!drainInput() && readNotifier_) readNotifier_->setEnabled(false);
        return;
    }
    char buffer[remote_limits::kMaxRequestBytes];
    const ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
    if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) return;
    if (n <= 0) {
        finish();  // closed or failed before sending anything: no reply
        return;
    }
    answer(std::string_view(buffer, static_cast<std::size_t>(n)));
}

void RemoteConnection::answer(std::string_view request) {
    answered_ = true;
    const auto published = store_->current();
    RemoteReply reply = processRequestBytes(request, *published);
    if (reply.action && sink_) sink_(*reply.action);
    reply_ = std::move(reply.response);
    drainInput();
    idleTimer_.start();  // from now on it guards the drain of the reply
    onWritable();
}

void RemoteConnection::onWritable() {
    if (done_) return;
    while (sent_ < reply_.size()) {
        const ssize_t n = ::send(fd_, reply_.data() + sent_, reply_.size() - sent_, MSG_NOSIGNAL);
        if (n < 0) {
            if (errno == EINTR) continue;
            if (errno == EAGAIN || errno == EWOULDBLOCK) {
                watch(writeNotifier_, QSocketNotifier::Write, &RemoteConnection::onWritable);
                watch(readNotifier_, QSocketNotifier::Read, &RemoteConnection::onReadable);
                return;
            }
            break;  // a send error ends the connection all the same
        }
        sent_ += static_cast<std::size_t>(n);
    }
    finish();
}

bool RemoteConnection::drainInput() {
    char scratch[4096];
    for (;;) {
        const ssize_t n = ::recv(fd_, scratch, sizeof scratch, 0);
        if (n > 0) continue;
        if (n < 0 && errno == EINTR) continue;
        return n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    }
}

void RemoteConnection::finish() {
    if (done_) return;
    if (readNotifier_) readNotifier_->setEnabled(false);
    if (writeNotifier_) writeNotifier_->setEnabled(false);
    done_ = true;
    idleTimer_.stop();
    ::close(fd_);
    fd_ = -1;
    // Counted as closed now: the listener may accept many connections in one
    // go before the loop gets round to deleting this one.
    emit closed();
    deleteLater();
}

}  // namespace orvane
