#include "recording/RecordingDuration.h"

#include <cmath>
#include <cstdint>

namespace orvane {

QString formatDuration(double seconds) {
    // A clock that has not started, or one gone wrong, reads as zero.
    const std::int64_t whole = std::isfinite(seconds) && seconds > 0 ? static_cast<std::int64_t>(seconds) : 0;
    const std::int64_t h = whole / 3600;
    const std::int64_t m = (whole % 3600) / 60;
    const std::int64_t s = whole % 60;
    if (h == 0) return QString::asprintf("%d:%02d", static_cast<int>(m), static_cast<int>(s));
    return QString::asprintf("%lld:%02d:%02d", static_cast<long long>(h), static_cast<int>(m), static_cast<int>(s));
}

}  // namespace orvane
