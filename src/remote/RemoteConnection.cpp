#include "remote/RemoteConnection.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string_view>

#include "remote/RemoteServerLimits.h"
#include "remote/RemoteSnapshotStore.h"
#include "remote/RequestProcessor.h"

namespace orvane {

// The descriptor stays blocking as accepted; every call here passes
// MSG_DONTWAIT instead, which saves two fcntl calls a connection.

namespace {

bool wouldBlock(int error) { return error == EAGAIN || error == EWOULDBLOCK; }

ssize_t receive(int fd, char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t n = ::recv(fd, buffer, size, MSG_DONTWAIT);
        if (n >= 0 || errno != EINTR) return n;
    }
}

// Whatever follows the first receive is never looked at; it is only drained
// so that closing sends FIN rather than a reset. False once the peer has
// closed its side or the connection failed.
bool drainInput(int fd) {
    char scratch[4096];
    for (;;) {
        const ssize_t n = receive(fd, scratch, sizeof scratch);
        if (n > 0) continue;
        return n < 0 && wouldBlock(errno);
    }
}

// As much as the socket takes now: the bytes sent, or nothing on an error.
std::optional<std::size_t> sendSome(int fd, std::string_view bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t n = ::send(fd, bytes.data() + sent, bytes.size() - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (n >= 0) {
            sent += static_cast<std::size_t>(n);
        } else if (wouldBlock(errno)) {
            break;
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return sent;
}

// Answers `request` with one send of the complete reply; returns what the
// socket did not take. Empty also when the send failed: the connection ends
// all the same. Read replies and the page go out from the text prepared for
// them, without a copy. No TCP_NODELAY: the reply is a single write followed
// by close, which pushes out any segment Nagle's algorithm held back.
std::string respond(int fd, std::string_view request, const RemoteSnapshotStore& store,
                    const RemoteConnection::ActionSink& sink) {
    const auto published = store.current();
    RemoteReply built;
    const std::string_view reply = processRequestBytes(request, *published, built);
    if (built.action && sink) sink(*built.action);
    const auto sent = sendSome(fd, reply);
    if (!sent) return {};
    return std::string(reply.substr(*sent));
}

}  // namespace

RemoteConnection* RemoteConnection::serve(qintptr descriptor, const std::shared_ptr<const RemoteSnapshotStore>& store,
                                          const ActionSink& sink, QObject* parent) {
    const int fd = static_cast<int>(descriptor);
    char request[remote_limits::kMaxRequestBytes];
    const ssize_t n = receive(fd, request, sizeof request);
    if (n < 0 && wouldBlock(errno)) {
        auto* connection = new RemoteConnection(fd, store, sink, parent);
        connection->awaitRequest();
        return connection;
    }
    if (n <= 0) {
        ::close(fd);  // closed or failed before sending anything: no reply
        return nullptr;
    }
    std::string rest = respond(fd, std::string_view(request, static_cast<std::size_t>(n)), *store, sink);
    if (rest.empty()) {
        drainInput(fd);
        ::close(fd);
        return nullptr;
    }
    auto* connection = new RemoteConnection(fd, store, sink, parent);
    connection->sendRest(std::move(rest));
    return connection;
}

RemoteConnection::RemoteConnection(int fd, std::shared_ptr<const RemoteSnapshotStore> store, ActionSink sink,
                                   QObject* parent)
    : QObject(parent), fd_(fd), store_(std::move(store)), sink_(std::move(sink)) {
    idleTimer_.setSingleShot(true);
    idleTimer_.setTimerType(Qt::PreciseTimer);  // a coarse timer may fire 5% early
    idleTimer_.setInterval(remote_limits::kIdleTimeout);
    connect(&idleTimer_, &QTimer::timeout, this, &RemoteConnection::finish);
}

RemoteConnection::~RemoteConnection() {
    if (fd_ >= 0) ::close(fd_);
}

void RemoteConnection::watch(std::unique_ptr<QSocketNotifier>& notifier, QSocketNotifier::Type type,
                             void (RemoteConnection::*slot)()) {
    if (!notifier) {
        notifier = std::make_unique<QSocketNotifier>(fd_, type);
        connect(notifier.get(), &QSocketNotifier::activated, this, slot);
    }
    notifier->setEnabled(true);
}

void RemoteConnection::awaitRequest() {
    idleTimer_.start();
    watch(readNotifier_, QSocketNotifier::Read, &RemoteConnection::onReadable);
}

void RemoteConnection::sendRest(std::string rest) {
    answered_ = true;
    rest_ = std::move(rest);
    idleTimer_.start();  // from now on it guards the drain of the reply
    watch(writeNotifier_, QSocketNotifier::Write, &RemoteConnection::onWritable);
    watch(readNotifier_, QSocketNotifier::Read, &RemoteConnection::onReadable);
}

void RemoteConnection::onReadable() {
    if (done_) return;
    if (answered_) {
        // Once the peer has closed its side the descriptor stays readable,
        // so stop listening and let the write side finish.
        if (!drainInput(fd_) && readNotifier_) readNotifier_->setEnabled(false);
        return;
    }
    char request[remote_limits::kMaxRequestBytes];
    const ssize_t n = receive(fd_, request, sizeof request);
    if (n < 0 && wouldBlock(errno)) return;
    if (n <= 0) {
        finish();  // closed or failed before sending anything: no reply
        return;
    }
    answered_ = true;
    std::string rest = respond(fd_, std::string_view(request, static_cast<std::size_t>(n)), *store_, sink_);
    if (rest.empty()) {
        finish();
        return;
    }
    sendRest(std::move(rest));
}

void RemoteConnection::onWritable() {
    if (done_) return;
    const auto sent = sendSome(fd_, rest_);
    if (sent && *sent < rest_.size()) {
        rest_.erase(0, *sent);
        return;
    }
    finish();  // all out, or a send error, which ends the connection all the same
}

void RemoteConnection::finish() {
    if (done_) return;
    if (readNotifier_) readNotifier_->setEnabled(false);
    if (writeNotifier_) writeNotifier_->setEnabled(false);
    done_ = true;
    idleTimer_.stop();
    if (answered_) drainInput(fd_);
    ::close(fd_);
    fd_ = -1;
    // Counted as closed now: the listener may accept many connections in one
    // go before the loop gets round to deleting this one.
    emit closed();
    deleteLater();
}

}  // namespace orvane
