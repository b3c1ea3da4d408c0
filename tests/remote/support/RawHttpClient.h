#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane::test {

// A plain blocking TCP client on 127.0.0.1, for raw bytes in and out.
class RawConnection {
public:
    explicit RawConnection(std::uint16_t port);
    ~RawConnection();
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    bool connected() const { return fd_ >= 0; }
    bool send(std::string_view bytes);
    void shutdownWrite();
    // Reads until the server closes or `timeout` passes. nullopt on timeout
    // or on an error such as a reset.
    std::optional<std::string> readToEnd(std::chrono::milliseconds timeout = std::chrono::seconds(5));
    // True when the server has closed (EOF or reset) within `timeout`.
    bool closedWithin(std::chrono::milliseconds timeout);

private:
    int fd_ = -1;
};

// Sends `bytes` on a fresh connection and returns all the server sends back.
std::string exchange(std::uint16_t port, std::string_view bytes);

}  // namespace orvane::test
