#include "composition/EraserHitTest.h"

#include <algorithm>
#include <cmath>

namespace orvane {

double EraserHitTest::distanceToSegment(Point p, Point a, Point b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double lengthSquared = dx * dx + dy * dy;
    double t = 0;
    if (lengthSquared > 0) t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / lengthSquared, 0.0, 1.0);
    return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

bool EraserHitTest::hitsShape(const DrawingShape& shape, Point p, double radius) {
    const Point a = shape.startPoint;
    const Point b = shape.endPoint;
    switch (shape.type) {
    case DrawingShapeType::line:
    case DrawingShapeType::arrow:
        // A zero-length line has no outline the eraser can reach.
        if (a == b) return false;
        return distanceToSegment(p, a, b) <= radius;
    case DrawingShapeType::rectangle: {
        const double left = std::min(a.x, b.x);
        const double right = std::max(a.x, b.x);
        const double top = std::min(a.y, b.y);
        const double bottom = std::max(a.y, b.y);
        // Containment as the platform's rectangle test has it: the minimum edge
        // inside, the maximum edge outside, and an empty rectangle holds nothing.
        const auto contains = [&](double l, double t, double r, double btm) {
            return r > l && btm > t && p.x >= l && p.x < r && p.y >= t && p.y < btm;
        };
        const bool inGrown = contains(left - radius, top - radius, right + radius, bottom + radius);
        const bool inShrunk = contains(left + radius, top + radius, right - radius, bottom - radius);
        return inGrown && !inShrunk;
    }
    case DrawingShapeType::circle: {
        const double cx = (a.x + b.x) / 2;
        const double cy = (a.y + b.y) / 2;
        const double rho = std::hypot(b.x - a.x, b.y - a.y) / 2;
        return std::abs(std::hypot(p.x - cx, p.y - cy) - rho) <= radius;
    }
    case DrawingShapeType::freehand: return false;
    }
    return false;
}

bool EraserHitTest::hitsPath(const FreehandPath& path, Point p, double radius) {
    return std::any_of(path.points.begin(), path.points.end(),
                       [&](Point q) { return std::hypot(q.x - p.x, q.y - p.y) <= radius; });
}

}  // namespace orvane
