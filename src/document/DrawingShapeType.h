#pragma once

#include <optional>

#include "document/DrawingTool.h"
#include "document/EnumStrings.h"

namespace orvane {

// What a finished shape is. `freehand` exists for symmetry with the tools; in
// practice freehand strokes are FreehandPath records, never shapes.
enum class DrawingShapeType { line = 1, arrow, rectangle, circle, freehand };

template <>
struct EnumStrings<DrawingShapeType> {
    static constexpr std::array<std::pair<DrawingShapeType, std::string_view>, 5> table{{
        {DrawingShapeType::line, "line"},
        {DrawingShapeType::arrow, "arrow"},
        {DrawingShapeType::rectangle, "rectangle"},
        {DrawingShapeType::circle, "circle"},
        {DrawingShapeType::freehand, "freehand"},
    }};
};

// The shape type a tool draws; the eraser draws none.
constexpr std::optional<DrawingShapeType> shapeTypeForTool(DrawingTool tool) {
    switch (tool) {
    case DrawingTool::line: return DrawingShapeType::line;
    case DrawingTool::arrow: return DrawingShapeType::arrow;
    case DrawingTool::rectangle: return DrawingShapeType::rectangle;
    case DrawingTool::circle: return DrawingShapeType::circle;
    case DrawingTool::freehand: return DrawingShapeType::freehand;
    case DrawingTool::eraser: return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace orvane
