#pragma once

#include <vector>

#include "document/CodableColor.h"
#include "document/DocumentEnums.h"
#include "document/ProgressStep.h"

namespace orvane {

// The preset-wide step overlay.
struct ProgressBarConfig {
    bool enabled = false;
    std::vector<ProgressStep> steps;
    ProgressBarOrientation orientation = ProgressBarOrientation::horizontal;
    ProgressBarPosition position = ProgressBarPosition::bottom;
    double size = 60;  // thickness of the bar
    CodableColor backgroundColor{0, 0, 0, 0.7};
    CodableColor completedColor{0.3, 0.7, 0.3, 1};
    CodableColor pendingColor{0.5, 0.5, 0.5, 1};
    CodableColor textColor{1, 1, 1, 1};
    double textSize = 14;
    double opacity = 0.9;

    friend bool operator==(const ProgressBarConfig&, const ProgressBarConfig&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::ProgressBarConfig> {
    std::size_t operator()(const orvane::ProgressBarConfig& p) const noexcept {
        std::size_t steps = 0;
        for (const auto& s : p.steps) steps = orvane::hashFields(steps, s);
        return orvane::hashFields(p.enabled, steps, p.orientation, p.position, p.size, p.backgroundColor,
                                  p.completedColor, p.pendingColor, p.textColor, p.textSize, p.opacity);
    }
};
