#pragma once

#include <chrono>

#include "document/DrawingColor.h"
#include "document/DrawingShapeType.h"
#include "document/Geometry.h"
#include "document/Uuid.h"

namespace orvane {

// One finished (or in-progress) shape of the drawing overlay. Points are in
// the coordinates of the overlay that drew it and are never converted.
struct DrawingShape {
    Uuid id = Uuid::generate();
    DrawingShapeType type = DrawingShapeType::line;
    Point startPoint;
    Point endPoint;
    DrawingColor color;
    double strokeWidth = 3.0;
    std::chrono::system_clock::time_point timestamp = std::chrono::system_clock::now();

    friend bool operator==(const DrawingShape&, const DrawingShape&) = default;
};

}  // namespace orvane
