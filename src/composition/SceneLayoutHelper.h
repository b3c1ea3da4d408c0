#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>

#include "document/DocumentEnums.h"

namespace orvane {

struct SourceConfiguration;
struct StreamingScene;

// Where the two kinds of source go in a layout; an absent frame means that
// kind is not drawn at all.
struct LayoutFrame {
    std::optional<QRectF> cameraFrame;
    std::optional<QRectF> contentFrame;
};

// The camera's box: its size and the position of its centre, in canvas
// coordinates.
struct CameraBox {
    QSizeF size;
    QPointF centre;

    QRectF rect() const {
        return {centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(), size.height()};
    }
};

// Layout geometry of a scene. Everything here runs on each layout pass, so
// nothing allocates.
class SceneLayoutHelper {
public:
    static LayoutFrame calculateFrames(SceneLayout layout, QSizeF canvas);

    // The layout actually drawn: a stored fullCamera without a camera but with
    // something else to show becomes fullScreen. Nothing else is corrected.
    static SceneLayout effectiveLayout(const StreamingScene& scene);

    static bool isPipLayout(SceneLayout layout);

    // Factor of the canvas width (rectangle, circle) or height (vertical).
    static double pipSizeFactor(CameraOverlaySize size, CameraShape shape);

    static CameraBox calculateCameraTransform(const SourceConfiguration& config, SceneLayout layout,
                                              QRectF cameraFrame);
    static CameraBox calculateCameraTransformPIP(const SourceConfiguration& config, QRectF cameraFrame,
                                                 QSizeF containerSize);

    // The shape the camera is clipped to: the side layouts and fullCamera
    // always get a rectangle, whatever the source asks for.
    static CameraShape cameraShapeForLayout(CameraShape configured, SceneLayout layout);
};

}  // namespace orvane
