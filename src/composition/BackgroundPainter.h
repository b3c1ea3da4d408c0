#pragma once

#include <QImage>
#include <QRect>
#include <QSizeF>

#include "document/StreamingScene.h"

class QPainter;

namespace orvane {

// The scene's background: its gradient, or the solid colour when the scene
// is solid or has no gradient colours. A gradient is computed per pixel, so
// it is drawn once into an image and reused while its colours, direction and
// the canvas size stay.
class BackgroundPainter {
public:
    // `covered`, in canvas pixels, is left out: something opaque goes there.
    void paint(QPainter& painter, QSizeF canvas, const StreamingScene& scene, QRect covered = {});

    // Paints the background directly, with no cache.
    static void paintDirect(QPainter& painter, QSizeF canvas, const StreamingScene& scene);

private:
    std::size_t key_ = 0;
    QImage cached_;
};

}  // namespace orvane
