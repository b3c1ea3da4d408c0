#pragma once

#include <QImage>
#include <QRectF>
#include <utility>
#include <vector>

#include "composition/RowResampler.h"

class QPainter;

namespace orvane {

// Draws a captured frame scaled into a rectangle, filtered bilinearly like a
// smooth QPainter::drawImage, at about half its cost. The frame is resampled
// straight into device pixels a row at a time (see RowResampler). Weights
// have six bits, so a pixel may differ from Qt's by a level or two.
//
// It takes 32-bit frames (RGB32 or premultiplied ARGB32) on a raster painter
// whose transform only scales and moves, on processors with AVX2; anything
// else is left to the caller (draw returns false) or, for drawWithin, to Qt.
class FrameScaler {
public:
    // A rounded rectangle in painter coordinates that a frame is cut to: a
    // screen's rounded corners, a camera's circle (a square whose radius is
    // half its side), or with radius 0 a plain rectangle.
    struct Outline {
        QRectF rect;
        double radius = 0;
    };

    static bool isAvailable();

    // Fills `target` (painter coordinates) with the `source` part of the
    // frame (the whole frame when null), as painter.drawImage(target, frame,
    // source) would with smooth scaling. Returns false, having drawn nothing,
    // when it cannot take the case.
    bool draw(QPainter& painter, QRectF target, const QImage& frame, QRectF source = {});

    // As draw, cut to `outline` with smooth edges: what drawImage gives under
    // a clip path of that shape. When the painter draws into an image with
    // no more than a rectangle for its clip, the rows are blended straight
    // into the image, each over the part of it that the outline covers, and
    // Qt's clipped blending (the larger part of the cost) is not needed.
    // Always draws: cases the scaler cannot take go to Qt.
    void drawWithin(QPainter& painter, const Outline& outline, QRectF target, const QImage& frame,
                    QRectF source = {});

private:
    struct Plan;
    enum class Planned { no, nothing, yes };

    // Checks the case and prepares the columns for the device pixels of
    // `target` that lie within `limit` (device pixels).
    Planned plan(QPainter& painter, QRectF target, const QImage& frame, QRectF source, QRectF limit, Plan* out);
    // Blends straight into the painter's image; false when it cannot.
    bool blendInto(QPainter& painter, const Outline& outline, QRectF target, const QImage& frame, QRectF source);

    RowResampler resampler_;
    QImage band_;
    std::vector<std::pair<int, int>> spans_;  // per device row: the columns an outline covers
};

}  // namespace orvane
