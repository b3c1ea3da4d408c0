#include "MovingDesktopStream.h"

#include "MovingDesktop.h"

namespace orvane {

MovingDesktopStream::MovingDesktopStream(const MovingDesktop& desktop, std::atomic<int>& openStreams)
    : desktop_(desktop), openStreams_(openStreams) {
    ++openStreams_;
}

MovingDesktopStream::~MovingDesktopStream() { --openStreams_; }

CaptureResult<GrabbedFrame> MovingDesktopStream::grabFrame() {
    const auto due = origin_ + next_ * std::chrono::nanoseconds(1'000'000'000 / MovingDesktop::kPicturesPerSecond);
    {
        std::unique_lock lock(mutex_);
        if (wake_.wait_until(lock, due, [this] { return interrupted_; }))
            return CaptureResult<GrabbedFrame>::failure(QStringLiteral("The stream was stopped"));
    }
    GrabbedFrame frame;
    frame.image = desktop_.pictureOfCycle(next_++);
    return frame;
}

void MovingDesktopStream::interrupt() {
    {
        std::lock_guard lock(mutex_);
        interrupted_ = true;
    }
    wake_.notify_all();
}

}  // namespace orvane
