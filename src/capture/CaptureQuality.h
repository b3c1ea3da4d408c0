#pragma once

#include <QSize>

namespace orvane {

// Size and rate of a live capture. The engine's quality setting maps onto
// one of the four rows below; capture itself knows only the numbers.
struct CaptureQuality {
    int width = 1280;
    int height = 720;
    int framesPerSecond = 15;

    QSize size() const { return {width, height}; }

    // The rows by their menu position 0..3 (performance, balanced, quality,
    // maximum). An ordinal outside that range gives the balanced row.
    static CaptureQuality forOrdinal(int ordinal);

    friend bool operator==(const CaptureQuality&, const CaptureQuality&) = default;
};

}  // namespace orvane
