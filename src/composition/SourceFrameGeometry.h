#pragma once

#include <QRectF>
#include <QSizeF>

namespace orvane {

// Where a live frame goes inside the box a layout gives it.
class SourceFrameGeometry {
public:
    // A screen or window frame: fitted with its aspect kept, scaled, then
    // moved by offsets counted in a 1920 by 1080 space. The result is in the
    // box's coordinates and is not clamped to the box.
    static QRectF screenFrameRect(QSizeF box, QSizeF frame, double scale, double horizontalOffset,
                                  double verticalOffset);

    // The camera picture's rectangle inside its box under the zoom factor,
    // kept centred so that the overflow is cut by the box.
    static QRectF cameraZoomRect(QSizeF box, double zoom);

    // The source rectangle of a frame that fills `target` with its aspect kept
    // (the overflow cropped equally on both sides).
    static QRectF aspectFillSource(QSizeF frame, QSizeF target);
};

}  // namespace orvane
