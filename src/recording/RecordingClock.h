#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace orvane {

// The one clock of a recording: the steady clock, read from an origin that
// is set once when the first frame is due. Audio and video place their
// samples on it; before the origin is set everything is pre-roll.
class RecordingClock {
public:
    using Clock = std::chrono::steady_clock;

    void setOrigin(Clock::time_point origin) { origin_ns_ = origin.time_since_epoch().count(); }
    // Sound after the end is dropped, so that the tracks end with the picture.
    void setEnd(Clock::time_point end) { end_ns_ = end.time_since_epoch().count(); }
    bool hasEnd() const { return end_ns_.load() != kUnset; }
    Clock::time_point end() const { return Clock::time_point(Clock::duration(end_ns_.load())); }
    bool hasOrigin() const { return origin_ns_.load() != kUnset; }
    Clock::time_point origin() const { return Clock::time_point(Clock::duration(origin_ns_.load())); }
    // Seconds from the origin to t (negative before it).
    double secondsAt(Clock::time_point t) const {
        return std::chrono::duration<double>(t - origin()).count();
    }

private:
    static constexpr std::int64_t kUnset = INT64_MIN;
    std::atomic<std::int64_t> origin_ns_{kUnset};
    std::atomic<std::int64_t> end_ns_{kUnset};
};

}  // namespace orvane
