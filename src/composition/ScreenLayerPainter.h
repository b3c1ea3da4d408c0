#pragma once

#include <QRectF>
#include <QString>

#include "composition/FrameScaler.h"
#include "composition/FrameSource.h"
#include "paint/SoftShadow.h"
#include "document/Source.h"

class QPainter;

namespace orvane {

// One screen or window source in its box: the frame fitted, scaled and
// offset, brightened, blurred, clipped to rounded corners, with shadow and
// a glowing border. Without a frame, the capture's state instead.
class ScreenLayerPainter {
public:
    // blurRadius is in canvas points (0 for a sharp picture). With
    // shadowDrawn the drop shadow is left out: the caller has drawn it
    // already (see shadow()).
    // `now` (seconds) turns the progress ring of a capture that is starting.
    void paint(QPainter& painter, QRectF box, const Source& source, const SourceFrame& frame, double blurRadius,
               bool shadowDrawn = false, double now = 0);

    // The drop shadow that paint() would draw for this frame, and its offset;
    // null when there is none. Valid until the next call on this painter.
    const SoftShadow* shadow(QRectF box, const Source& source, const SourceFrame& frame, QPointF* offset);

    // The part of the box that the frame will cover completely (captured
    // frames are opaque): the frame's rectangle less its rounded corners and
    // its blurred edge. Empty without a frame.
    static QRectF opaqueRect(QRectF box, const Source& source, const SourceFrame& frame, double blurRadius);

private:
    // The frame's rectangle in the box and its corner radius; false when
    // there is nothing to draw.
    static bool place(QRectF box, const Source& source, const SourceFrame& frame, QRectF* rect, double* radius);
    const SoftShadow* shadowFor(QRectF rect, double radius, const SourceConfiguration& config);

    QString shadowKey_;
    SoftShadow shadow_;
    QString borderKey_;
    SoftShadow border_;
    FrameScaler scaler_;
};

}  // namespace orvane
