#pragma once

#include <QRectF>
#include <QString>

#include "composition/FrameSource.h"
#include "composition/SoftShadow.h"
#include "document/Source.h"

class QPainter;

namespace orvane {

// One screen or window source in its box: the frame fitted, scaled and
// offset, brightened, blurred, clipped to rounded corners, with shadow and
// a glowing border. Without a frame, the capture's state instead.
class ScreenLayerPainter {
public:
    // blurRadius is in canvas points (0 for a sharp picture).
    void paint(QPainter& painter, QRectF box, const Source& source, const SourceFrame& frame, double blurRadius);

    // The part of the box that the frame will cover completely (captured
    // frames are opaque): the frame's rectangle less its rounded corners and
    // its blurred edge. Empty without a frame.
    static QRectF opaqueRect(QRectF box, const Source& source, const SourceFrame& frame, double blurRadius);

private:
    QString shadowKey_;
    SoftShadow shadow_;
    QString borderKey_;
    SoftShadow border_;
};

}  // namespace orvane
