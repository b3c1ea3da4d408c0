#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QRectF>

class QPainter;

namespace orvane {

// A blurred, coloured copy of a shape: drop shadows under frames and the
// glow around borders; with no blur, a cached outline (strokes of large or
// round shapes cost more to draw than to copy). Blurred at a reduced scale (a soft shadow has no fine
// detail), then enlarged once to full size so that drawing it is a plain
// copy; callers keep the result while the shape and its numbers stay the
// same.
class SoftShadow {
public:
    // `shape` is in canvas points. With strokeWidth > 0 the shape's outline
    // of that width is blurred, otherwise its fill. sigma is the Gaussian's
    // standard deviation in canvas points.
    static SoftShadow make(const QPainterPath& shape, double strokeWidth, double sigma, const QColor& color);

    // A glowing outline in one image: the shape's outline blurred by
    // glowSigma (none when 0), with the crisp outline over it.
    static SoftShadow glowingOutline(const QPainterPath& shape, double strokeWidth, double glowSigma,
                                     const QColor& color);

    // Draws the shadow moved by `offset`.
    void draw(QPainter& painter, QPointF offset = {}) const;

    // The same, except inside `covered` (canvas points), which something
    // opaque is about to cover: only the strips around it are drawn, which
    // for a shadow under a large picture is most of the saving.
    // With `corner` > 0 the covered rectangle has rounded corners: squares
    // of that side in its four corners are drawn as well (an outline's glow
    // reaches into them along the curve).
    void drawAround(QPainter& painter, QPointF offset, QRectF covered, double corner = 0) const;

    bool isNull() const { return image_.isNull(); }
    // Changes whenever the shadow is made anew.
    qint64 cacheKey() const { return image_.cacheKey(); }
    const QRectF& target() const { return target_; }

private:
    QImage image_;
    QRectF target_;
};

}  // namespace orvane
