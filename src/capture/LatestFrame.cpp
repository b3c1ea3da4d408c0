#include "capture/LatestFrame.h"

#include <utility>

namespace orvane {

CapturedFrame LatestFrame::read() const {
    std::lock_guard lock(mutex_);
    return frame_;
}

void LatestFrame::replace(QImage image, std::chrono::steady_clock::time_point capturedAt,
                          std::chrono::steady_clock::time_point grabbedAt) {
    QImage replaced;  // let go of outside the lock: that may hand a buffer back to its pool
    {
        std::lock_guard lock(mutex_);
        replaced = std::exchange(frame_.image, std::move(image));
        frame_.sequence += 1;
        frame_.capturedAt = capturedAt;
        frame_.grabbedAt = grabbedAt;
    }
}

}  // namespace orvane
