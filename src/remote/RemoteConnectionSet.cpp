#include "remote/RemoteConnectionSet.h"

#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

#include "document/Log.h"
#include "remote/RemoteSnapshotStore.h"
#include "remote/RequestProcessor.h"

namespace orvane {

// Descriptors stay blocking as accepted; every call here passes
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
                    const RemoteConnectionSet::ActionSink& sink) {
    const auto published = store.current();
    RemoteReply built;
    const std::string_view reply = processRequestBytes(request, *published, built);
    if (built.action && sink) sink(*built.action);
    const auto sent = sendSome(fd, reply);
    if (!sent) return {};
    return std::string(reply.substr(*sent));
}

}  // namespace

RemoteConnectionSet::RemoteConnectionSet(std::shared_ptr<const RemoteSnapshotStore> store, ActionSink sink,
                                         QObject* parent)
    : QObject(parent), store_(std::move(store)), sink_(std::move(sink)) {
    epoll_ = ::epoll_create1(EPOLL_CLOEXEC);
    if (epoll_ < 0) {
        // Requests that come with their connection are still answered.
        logLine(std::string("❌ Remote server cannot wait for connections: ") + std::strerror(errno));
    } else {
        readyNotifier_ = std::make_unique<QSocketNotifier>(epoll_, QSocketNotifier::Read);
        connect(readyNotifier_.get(), &QSocketNotifier::activated, this, &RemoteConnectionSet::onReady);
    }
    idleTimer_.setSingleShot(true);
    idleTimer_.setTimerType(Qt::PreciseTimer);  // a coarse timer may fire 5% early
    connect(&idleTimer_, &QTimer::timeout, this, &RemoteConnectionSet::onIdleTimeout);
}

RemoteConnectionSet::~RemoteConnectionSet() {
    readyNotifier_.reset();
    for (const Slot& slot : slots_)
        if (slot.fd >= 0) ::close(slot.fd);
    if (epoll_ >= 0) ::close(epoll_);
}

void RemoteConnectionSet::serve(qintptr descriptor) {
    const int fd = static_cast<int>(descriptor);
    if (taken_ >= remote_limits::kMaxConnections) {
        ::close(fd);
        return;
    }
    char request[remote_limits::kMaxRequestBytes];
    const ssize_t n = receive(fd, request, sizeof request);
    if (n < 0 && wouldBlock(errno)) {
        wait(fd, {});
        return;
    }
    if (n <= 0) {
        ::close(fd);  // closed or failed before sending anything: no reply
        return;
    }
    std::string rest = respond(fd, std::string_view(request, static_cast<std::size_t>(n)), *store_, sink_);
    if (!rest.empty()) {
        wait(fd, std::move(rest));
        return;
    }
    drainInput(fd);
    ::close(fd);
}

// Takes a free slot for `fd`: waiting for the request when `rest` is empty,
// else for the socket to take the rest of the reply.
void RemoteConnectionSet::wait(int fd, std::string rest) {
    const auto free = std::find_if(slots_.begin(), slots_.end(), [](const Slot& s) { return s.fd < 0; });
    if (epoll_ < 0 || free == slots_.end()) {
        ::close(fd);
        return;
    }
    Slot& slot = *free;
    slot.fd = fd;
    slot.answered = !rest.empty();
    slot.peerClosed = false;
    slot.rest = std::move(rest);
    slot.deadline = Clock::now() + remote_limits::kIdleTimeout;
    watch(slot, EPOLL_CTL_ADD);
    ++taken_;
    // Every deadline is the same span from its start, so a new one is never
    // earlier than those the timer already waits for.
    if (!idleTimer_.isActive()) armIdleTimer();
}

void RemoteConnectionSet::watch(const Slot& slot, int operation) {
    epoll_event event{};
    // Once answered, still readable for the drain until the peer closes.
    event.events = !slot.answered ? EPOLLIN : slot.peerClosed ? EPOLLOUT : EPOLLIN | EPOLLOUT;
    event.data.u32 = static_cast<std::uint32_t>(&slot - slots_.data());
    ::epoll_ctl(epoll_, operation, slot.fd, &event);
}

void RemoteConnectionSet::onReady() {
    epoll_event events[remote_limits::kMaxConnections];
    const int count = ::epoll_wait(epoll_, events, remote_limits::kMaxConnections, 0);
    for (int i = 0; i < count; ++i) {
        Slot& slot = slots_[events[i].data.u32];
        if (slot.fd < 0) continue;
        const std::uint32_t ready = events[i].events;
        if (!slot.answered) {
            onReadable(slot);
            continue;
        }
        if ((ready & EPOLLIN) && !slot.peerClosed && !drainInput(slot.fd)) {
            // A closed peer keeps the descriptor readable: stop asking.
            slot.peerClosed = true;
            watch(slot, EPOLL_CTL_MOD);
        }
        if (ready & (EPOLLOUT | EPOLLERR | EPOLLHUP)) onWritable(slot);
    }
}

void RemoteConnectionSet::onReadable(Slot& slot) {
    char request[remote_limits::kMaxRequestBytes];
    const ssize_t n = receive(slot.fd, request, sizeof request);
    if (n < 0 && wouldBlock(errno)) return;
    if (n <= 0) {
        release(slot);  // closed or failed before sending anything: no reply
        return;
    }
    slot.answered = true;
    std::string rest = respond(slot.fd, std::string_view(request, static_cast<std::size_t>(n)), *store_, sink_);
    if (rest.empty()) {
        release(slot);
        return;
    }
    sendLater(slot, std::move(rest));
}

void RemoteConnectionSet::sendLater(Slot& slot, std::string rest) {
    slot.rest = std::move(rest);
    slot.deadline = Clock::now() + remote_limits::kIdleTimeout;  // from now on it guards the drain of the reply
    watch(slot, EPOLL_CTL_MOD);
}

void RemoteConnectionSet::onWritable(Slot& slot) {
    const auto sent = sendSome(slot.fd, slot.rest);
    if (sent && *sent < slot.rest.size()) {
        slot.rest.erase(0, *sent);
        return;
    }
    release(slot);  // all out, or a send error, which ends the connection all the same
}

void RemoteConnectionSet::release(Slot& slot) {
    // No EPOLL_CTL_DEL: nothing else holds the descriptor, so closing it
    // takes it out of the epoll set.
    if (slot.answered && !slot.peerClosed) drainInput(slot.fd);
    ::close(slot.fd);
    slot.fd = -1;
    slot.rest.clear();
    slot.rest.shrink_to_fit();  // a long reply's memory goes with it
    --taken_;
}

void RemoteConnectionSet::onIdleTimeout() {
    const auto now = Clock::now();
    for (Slot& slot : slots_)
        if (slot.fd >= 0 && slot.deadline <= now) release(slot);
    armIdleTimer();
}

void RemoteConnectionSet::armIdleTimer() {
    std::optional<Clock::time_point> earliest;
    for (const Slot& slot : slots_)
        if (slot.fd >= 0 && (!earliest || slot.deadline < *earliest)) earliest = slot.deadline;
    if (!earliest) {
        idleTimer_.stop();
        return;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*earliest - Clock::now());
    idleTimer_.start(std::max(left, std::chrono::milliseconds(0)));
}

}  // namespace orvane
