#include "capture/CaptureRetry.h"

#include <algorithm>

namespace orvane {

CaptureRetry::CaptureRetry(std::function<void()> attempt) {
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, std::move(attempt));
}

std::chrono::milliseconds CaptureRetry::delayAfter(int failures) {
    if (failures <= 1) return kFirstDelay;
    // Doubling stops well before the shift could overflow.
    const int doublings = std::min(failures - 1, 16);
    return std::min<std::chrono::milliseconds>(kFirstDelay * (1 << doublings), kLongestDelay);
}

void CaptureRetry::scheduleAfterFailure() {
    ++failures_;
    timer_.start(delayAfter(failures_));
}

void CaptureRetry::retrySoon() {
    if (timer_.isActive()) timer_.start(0);
}

void CaptureRetry::reset() {
    timer_.stop();
    failures_ = 0;
}

}  // namespace orvane
