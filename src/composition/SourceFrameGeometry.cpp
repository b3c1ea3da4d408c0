#include "composition/SourceFrameGeometry.h"

#include <algorithm>

namespace orvane {

QRectF SourceFrameGeometry::screenFrameRect(QSizeF box, QSizeF frame, double scale, double horizontalOffset,
                                            double verticalOffset) {
    if (frame.width() <= 0 || frame.height() <= 0) return {};
    const double fit = std::min(box.width() / frame.width(), box.height() / frame.height());
    const double k = fit * scale;
    const double w = frame.width() * k;
    const double h = frame.height() * k;
    const double ox = box.width() / 1920.0 * horizontalOffset;
    const double oy = box.height() / 1080.0 * verticalOffset;
    return {box.width() / 2 + ox - w / 2, box.height() / 2 + oy - h / 2, w, h};
}

QRectF SourceFrameGeometry::cameraZoomRect(QSizeF box, double zoom) {
    const double w = zoom * box.width();
    const double h = zoom * box.height();
    return {-(w - box.width()) / 2, -(h - box.height()) / 2, w, h};
}

QRectF SourceFrameGeometry::aspectFillSource(QSizeF frame, QSizeF target) {
    if (frame.isEmpty() || target.isEmpty()) return {};
    const double scale = std::max(target.width() / frame.width(), target.height() / frame.height());
    const double w = target.width() / scale;
    const double h = target.height() / scale;
    return {(frame.width() - w) / 2, (frame.height() - h) / 2, w, h};
}

}  // namespace orvane
