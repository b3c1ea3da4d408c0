#pragma once

#include "document/HashCombine.h"

namespace orvane {

// A drawing colour in sRGB, components from 0 to 1. Initial selection: red.
struct DrawingColor {
    double red = 1;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend bool operator==(const DrawingColor&, const DrawingColor&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::DrawingColor> {
    std::size_t operator()(const orvane::DrawingColor& c) const noexcept {
        return orvane::hashFields(c.red, c.green, c.blue, c.alpha);
    }
};
