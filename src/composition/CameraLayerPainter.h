#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

#include "composition/FrameScaler.h"
#include "composition/FrameSource.h"
#include "composition/SceneLayoutHelper.h"
#include "paint/SoftShadow.h"
#include "document/Source.h"

class QPainter;
class QPainterPath;

namespace orvane {

// The camera layer: the first camera's picture in its box, clipped to its
// shape, adjusted, zoomed about the canvas centre, masked in the side
// layouts, with its border and glow. A camera without a frame is a black box,
// as a camera that cannot start shows nothing.
class CameraLayerPainter {
public:
    void paint(QPainter& painter, QSizeF canvas, SceneLayout layout, QRectF cameraFrame, const Source& camera,
               const SourceFrame& frame, double zoom);

    // The box and clip shape a camera gets in a layout.
    static CameraBox boxFor(const SourceConfiguration& config, SceneLayout layout, QRectF cameraFrame,
                            QSizeF canvas);
    static QPainterPath clipPath(const CameraBox& box, CameraShape shape, double cornerRadius);
    // The same shape as a rounded rectangle (a circle's radius is half its side).
    static FrameScaler::Outline outline(const CameraBox& box, CameraShape shape, double cornerRadius);

private:
    void paintBox(QPainter& painter, const CameraBox& box, CameraShape shape, const SourceConfiguration& config,
                  const SourceFrame& frame);

    QString borderKey_;
    SoftShadow border_;
    QImage layer_;  // reused for the masked layouts
    FrameScaler scaler_;
};

}  // namespace orvane
