#pragma once

#include <QImage>

#include <chrono>
#include <mutex>

#include "capture/CapturedFrame.h"

namespace orvane {

// The latest frame of one capture, handed from its thread to readers on
// any thread: the capture thread replaces it, a reader copies it out (a
// QImage shares its pixels, so the copy costs nothing). A reader such as
// the recorder holds this, not the capture, so it never needs the main
// thread to see new frames, and it may hold it after the capture has ended:
// the last frame then stays, with its sequence number.
class LatestFrame {
public:
    CapturedFrame read() const;
    // Sequence numbers count from 1 with each replacement.
    void replace(QImage image, std::chrono::steady_clock::time_point capturedAt,
                 std::chrono::steady_clock::time_point grabbedAt);

private:
    mutable std::mutex mutex_;
    CapturedFrame frame_;  // protected by mutex_
};

}  // namespace orvane
