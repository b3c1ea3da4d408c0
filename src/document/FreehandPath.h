#pragma once

#include <chrono>
#include <vector>

#include "document/DrawingColor.h"
#include "document/Geometry.h"
#include "document/Uuid.h"

namespace orvane {

// One freehand stroke: every pointer change of the gesture, unthinned, in
// the coordinates of the overlay that drew it.
struct FreehandPath {
    Uuid id = Uuid::generate();
    std::vector<Point> points;
    DrawingColor color;
    double strokeWidth = 3.0;
    std::chrono::system_clock::time_point timestamp = std::chrono::system_clock::now();

    friend bool operator==(const FreehandPath&, const FreehandPath&) = default;
};

}  // namespace orvane
