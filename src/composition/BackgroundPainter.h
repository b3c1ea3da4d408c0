#pragma once

#include <QImage>
#include <QRect>
#include <QSizeF>

#include "paint/SoftShadow.h"
#include "document/StreamingScene.h"

class QPainter;

namespace orvane {

// The scene's background: its gradient, or the solid colour when the scene
// is solid or has no gradient colours. A gradient is computed per pixel, so
// it is drawn once into an image and reused while its colours, direction and
// the canvas size stay.
//
// The drop shadow of the lowest picture can be drawn into that image too:
// it does not change while the picture's frame does, and blending it anew on
// every frame would cost more than all of the background.
class BackgroundPainter {
public:
    // `covered`, in canvas pixels, is left out: something opaque goes there.
    // `shadow`, when given, is drawn over the background at `shadowOffset`,
    // as SoftShadow::draw would.
    void paint(QPainter& painter, QSizeF canvas, const StreamingScene& scene, QRect covered = {},
               const SoftShadow* shadow = nullptr, QPointF shadowOffset = {});

    // Paints the background directly, with no cache.
    static void paintDirect(QPainter& painter, QSizeF canvas, const StreamingScene& scene);

private:
    std::size_t key_ = 0;
    QImage cached_;
};

}  // namespace orvane
