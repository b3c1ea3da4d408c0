#pragma once

#include <QImage>

#include <chrono>
#include <cstdint>

namespace orvane {

// The latest picture of a shared capture, with when it was taken.
struct CapturedFrame {
    QImage image;
    std::uint64_t sequence = 0;  // 0 until the first frame
    std::chrono::steady_clock::time_point capturedAt;  // when the grab was asked for
    std::chrono::steady_clock::time_point grabbedAt;   // when the grab had returned
};

}  // namespace orvane
