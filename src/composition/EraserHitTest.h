#pragma once

#include "document/DrawingShape.h"
#include "document/FreehandPath.h"
#include "document/Geometry.h"

namespace orvane {

// What the eraser removes. Shapes go only when the eraser is near their
// outline; paths when one of their points is within reach (segments between
// points are not tested).
class EraserHitTest {
public:
    static constexpr double kRadius = 20;

    static bool hitsShape(const DrawingShape& shape, Point p, double radius = kRadius);
    static bool hitsPath(const FreehandPath& path, Point p, double radius = kRadius);

    static double distanceToSegment(Point p, Point a, Point b);
};

}  // namespace orvane
