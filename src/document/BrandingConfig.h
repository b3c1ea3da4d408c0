#pragma once

#include <optional>
#include <string>

#include "document/CodableColor.h"
#include "document/DocumentEnums.h"
#include "document/HashCombine.h"

namespace orvane {

// The preset-wide logo and text plate.
struct BrandingConfig {
    bool enabled = false;
    std::string text;
    CodableColor textColor{1, 1, 1, 1};
    double textSize = 16;
    std::optional<std::string> logoImagePath;  // inside the logos directory
    double logoWidth = 80;
    double logoHeight = 80;
    BrandingPosition position = BrandingPosition::bottomRight;
    double opacity = 1.0;
    bool showBackground = true;
    CodableColor backgroundColor{0, 0, 0, 0.6};

    friend bool operator==(const BrandingConfig&, const BrandingConfig&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::BrandingConfig> {
    std::size_t operator()(const orvane::BrandingConfig& b) const noexcept {
        return orvane::hashFields(b.enabled, b.text, b.textColor, b.textSize, b.logoImagePath, b.logoWidth,
                                  b.logoHeight, b.position, b.opacity, b.showBackground, b.backgroundColor);
    }
};
