#pragma once

#include <QTimer>

#include <chrono>
#include <functional>

namespace orvane {

// When to try a failed capture again: after 1 s, then 2, 4, 8 and 16 s,
// then every 30 s, and on the next turn of the event loop when whatever
// can be captured has changed (a monitor plugged in, a window opened). The
// attempt always runs from the timer, never inside the caller, so nothing
// that reacts to a failure can start a capture while the failure is still
// being reported. Main thread.
class CaptureRetry {
public:
    static constexpr std::chrono::milliseconds kFirstDelay{1000};
    static constexpr std::chrono::milliseconds kLongestDelay{30000};

    explicit CaptureRetry(std::function<void()> attempt);
    CaptureRetry(const CaptureRetry&) = delete;
    CaptureRetry& operator=(const CaptureRetry&) = delete;

    // The wait before attempt number `failures` (1 after the first failure).
    static std::chrono::milliseconds delayAfter(int failures);

    // After a failure, start or attempt: waits the next, longer delay.
    void scheduleAfterFailure();
    // Brings a waiting attempt forward to the next turn of the event loop;
    // nothing when no attempt waits.
    void retrySoon();
    // Back to the first delay, with no attempt waiting: after a success or
    // a stop.
    void reset();

    bool isWaiting() const { return timer_.isActive(); }
    int failureCount() const { return failures_; }
    std::chrono::milliseconds pendingDelay() const { return std::chrono::milliseconds(timer_.interval()); }

private:
    QTimer timer_;
    int failures_ = 0;
};

}  // namespace orvane
