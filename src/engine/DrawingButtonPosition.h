#pragma once

#include <string_view>

#include "document/EnumStrings.h"

namespace orvane {

// Where the floating drawing button sits in the pop-out window. A session
// setting, never stored; the label is what the picker shows.
enum class DrawingButtonPosition { topLeft = 1, topRight, bottomLeft, bottomRight, centerLeft, centerRight };

template <>
struct EnumStrings<DrawingButtonPosition> {
    static constexpr std::array<std::pair<DrawingButtonPosition, std::string_view>, 6> table{{
        {DrawingButtonPosition::topLeft, "Top Left"},
        {DrawingButtonPosition::topRight, "Top Right"},
        {DrawingButtonPosition::bottomLeft, "Bottom Left"},
        {DrawingButtonPosition::bottomRight, "Bottom Right"},
        {DrawingButtonPosition::centerLeft, "Center Left"},
        {DrawingButtonPosition::centerRight, "Center Right"},
    }};
};

}  // namespace orvane
