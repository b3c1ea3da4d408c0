#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>
#include <mutex>
#include <thread>

#include "capture/CapturedFrame.h"

namespace orvane {

// A desktop that changes on every frame the way a live screen capture does:
// a text editor scrolling by a line a frame, a clock and a moving pointer.
// frameAt(n) draws frame n; start() publishes a new frame 30 times a second
// on a thread of its own, each a fresh picture with a new sequence number,
// as a capture's thread would.
class MovingDesktop {
public:
    explicit MovingDesktop(QSize size = QSize(1920, 1080));
    ~MovingDesktop();
    MovingDesktop(const MovingDesktop&) = delete;
    MovingDesktop& operator=(const MovingDesktop&) = delete;

    QImage frameAt(std::int64_t n) const;

    void start();
    CapturedFrame latestFrame() const;

private:
    void run(std::stop_token stop);

    const QSize size_;
    QImage text_;  // the editor's whole text, taller than the screen
    mutable std::mutex mutex_;
    CapturedFrame latest_;  // protected by mutex_
    std::jthread thread_;
};

}  // namespace orvane
