#pragma once

#include <chrono>
#include <cstddef>

namespace orvane::remote_limits {

inline constexpr std::size_t kMaxRequestBytes = 8192;  // one receive, never a second
inline constexpr std::chrono::milliseconds kIdleTimeout{5000};
inline constexpr int kMaxConnections = 64;

}  // namespace orvane::remote_limits
