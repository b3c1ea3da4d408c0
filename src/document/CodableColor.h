#pragma once

#include "document/HashCombine.h"

namespace orvane {

// An sRGB colour with components from 0 to 1.
struct CodableColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend bool operator==(const CodableColor&, const CodableColor&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::CodableColor> {
    std::size_t operator()(const orvane::CodableColor& c) const noexcept {
        return orvane::hashFields(c.red, c.green, c.blue, c.alpha);
    }
};
