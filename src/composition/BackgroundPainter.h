#pragma once

#include <QSizeF>

#include "document/StreamingScene.h"

class QPainter;

namespace orvane {

// The scene's background: its gradient, or the solid colour when the scene
// is solid or has no gradient colours.
class BackgroundPainter {
public:
    static void paint(QPainter& painter, QSizeF canvas, const StreamingScene& scene);
};

}  // namespace orvane
