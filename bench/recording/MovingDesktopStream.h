#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

#include "capture/CaptureStream.h"

namespace orvane {

class MovingDesktop;

// A live stream of a MovingDesktop's pictures, as a display capture would
// deliver them: the next picture of its cycle 60 times a second, on
// absolute deadlines. It paces itself, so a shared capture takes every
// picture as it comes. The desktop must have drawn its cycle (start()).
// `openStreams` counts the streams alive.
class MovingDesktopStream : public CaptureStream {
public:
    MovingDesktopStream(const MovingDesktop& desktop, std::atomic<int>& openStreams);
    ~MovingDesktopStream() override;

    CaptureResult<GrabbedFrame> grabFrame() override;
    bool pacesItself() const override { return true; }
    void interrupt() override;

private:
    const MovingDesktop& desktop_;
    std::atomic<int>& openStreams_;
    const std::chrono::steady_clock::time_point origin_ = std::chrono::steady_clock::now();
    std::int64_t next_ = 0;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool interrupted_ = false;  // protected by mutex_
};

}  // namespace orvane
