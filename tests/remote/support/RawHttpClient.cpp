#include "RawHttpClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace orvane::test {

RawConnection::RawConnection(std::uint16_t port) {
    fd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd_ < 0) return;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::close(fd_);
        fd_ = -1;
    }
}

RawConnection::~RawConnection() {
    if (fd_ >= 0) ::close(fd_);
}

bool RawConnection::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

void RawConnection::shutdownWrite() { ::shutdown(fd_, SHUT_WR); }

std::optional<std::string> RawConnection::readToEnd(std::chrono::milliseconds timeout) {
    std::string out;
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    char buffer[16384];
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return std::nullopt;
        pollfd p{fd_, POLLIN, 0};
        const int ready = ::poll(&p, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) return std::nullopt;
        const ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
        if (n < 0) {
            if (errno == EINTR) continue;
            return std::nullopt;
        }
        if (n == 0) return out;
        out.append(buffer, static_cast<std::size_t>(n));
    }
}

bool RawConnection::closedWithin(std::chrono::milliseconds timeout) {
    pollfd p{fd_, POLLIN, 0};
    if (::poll(&p, 1, static_cast<int>(timeout.count())) <= 0) return false;
    char byte;
    const ssize_t n = ::recv(fd_, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    return n == 0 || (n < 0 && errno == ECONNRESET);
}

std::string exchange(std::uint16_t port, std::string_view bytes) {
    RawConnection connection(port);
    if (!connection.connected() || !connection.send(bytes)) return "<no connection>";
    return connection.readToEnd().value_or("<timeout or reset>");
}

}  // namespace orvane::test
