#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

#include "capture/CapturedFrame.h"

namespace orvane {

// A desktop that changes all the time the way a live screen capture does:
// a text editor scrolling by a line a picture, a counter and a moving
// pointer. frameAt(n) draws picture n. start() draws a cycle of kCycle
// pictures once and then publishes the next one 60 times a second on a
// thread of its own, each with a new sequence number, as a capture's thread
// would: every frame of a 30 Hz recording finds a new picture. The pictures
// are drawn beforehand so that the benchmark's own drawing does not count
// as the recorder's CPU.
class MovingDesktop {
public:
    explicit MovingDesktop(QSize size = QSize(1920, 1080));
    ~MovingDesktop();
    MovingDesktop(const MovingDesktop&) = delete;
    MovingDesktop& operator=(const MovingDesktop&) = delete;

    static constexpr int kCycle = 30;
    static constexpr int kPicturesPerSecond = 60;

    QImage frameAt(std::int64_t n) const;

    // Draws the cycle and starts publishing.
    void start();
    // Draws the cycle only, for a stream that hands its pictures out itself.
    void drawCycle();
    CapturedFrame latestFrame() const;
    // Picture n of the drawn cycle.
    QImage pictureOfCycle(std::int64_t n) const { return cycle_[static_cast<std::size_t>(n % kCycle)]; }

private:
    void run(std::stop_token stop);

    const QSize size_;
    QImage text_;  // the editor's whole text, taller than the screen
    std::vector<QImage> cycle_;  // drawn by drawCycle(), before any thread reads it
    mutable std::mutex mutex_;
    CapturedFrame latest_;  // protected by mutex_
    std::jthread thread_;
};

}  // namespace orvane
