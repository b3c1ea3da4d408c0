#pragma once

#include <chrono>
#include <cstddef>

namespace orvane::remote_limits {

inline constexpr std::size_t kMaxRequestBytes = 8192;  // one receive, never a second
inline constexpr std::chrono::milliseconds kIdleTimeout{5000};
inline constexpr int kMaxConnections = 64;
// Connections the kernel completes while the server thread waits for a core
// queue here; a burst of as many as are served at once, twice over, fits.
inline constexpr int kListenBacklog = 2 * kMaxConnections;

}  // namespace orvane::remote_limits
