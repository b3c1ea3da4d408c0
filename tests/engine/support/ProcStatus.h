#pragma once

#include <optional>

namespace orvane::test {

// VmRSS of /proc/self/status in MB: the kernel's own figure, read another
// way than the monitor reads it.
std::optional<double> residentMegabytesFromStatus();

}  // namespace orvane::test
