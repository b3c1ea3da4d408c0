#pragma once

#include "document/EnumStrings.h"

namespace orvane {

// The tool selected for the next drawing gesture. `circle` exists in the model
// and is drawn, though the toolbar does not offer it.
enum class DrawingTool { line = 1, arrow, rectangle, circle, freehand, eraser };

template <>
struct EnumStrings<DrawingTool> {
    static constexpr std::array<std::pair<DrawingTool, std::string_view>, 6> table{{
        {DrawingTool::line, "line"},
        {DrawingTool::arrow, "arrow"},
        {DrawingTool::rectangle, "rectangle"},
        {DrawingTool::circle, "circle"},
        {DrawingTool::freehand, "freehand"},
        {DrawingTool::eraser, "eraser"},
    }};
};

}  // namespace orvane
