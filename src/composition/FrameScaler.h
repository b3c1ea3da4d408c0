#pragma once

#include <QImage>
#include <QRectF>
#include <cstdint>
#include <vector>

class QPainter;

namespace orvane {

// Draws a captured frame scaled into a rectangle, filtered bilinearly like a
// smooth QPainter::drawImage, at about half its cost. The frame is resampled
// straight into device pixels in two separable passes with wide integer
// arithmetic, a band of rows at a time (the band stays in the cache), and
// each band is then drawn unscaled under the painter's clip, opacity and
// composition mode. Weights have six bits, so a pixel may differ from Qt's
// by a level or two.
//
// It takes 32-bit frames (RGB32 or premultiplied ARGB32) on a raster painter
// whose transform only scales and moves, on processors with AVX2; anything
// else is left to the caller (draw returns false).
class FrameScaler {
public:
    static bool isAvailable();

    // Fills `target` (painter coordinates) with the `source` part of the
    // frame (the whole frame when null), as painter.drawImage(target, frame,
    // source) would with smooth scaling. Returns false, having drawn nothing,
    // when it cannot take the case.
    bool draw(QPainter& painter, QRectF target, const QImage& frame, QRectF source = {});

private:
    QImage band_;
    std::vector<std::uint32_t> row_;        // one vertically blended source row
    std::vector<std::int32_t> column_;      // per output column: left source pixel
    std::vector<std::uint64_t> weights_;    // per output column: (64 - w, w) byte pairs, four times
};

}  // namespace orvane
