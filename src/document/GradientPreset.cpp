#include "document/GradientPreset.h"

#include <cmath>

namespace orvane {

namespace {

GradientPreset row(const char* name, GradientDirection direction, std::initializer_list<CodableColor> colors) {
    return GradientPreset{Uuid::generate(), name, std::vector<CodableColor>(colors), direction};
}

}  // namespace

const std::vector<GradientPreset>& GradientPreset::presets() {
    using D = GradientDirection;
    static const std::vector<GradientPreset> table{
        row("Midnight Blue", D::topToBottom, {{0.05, 0.1, 0.2, 1}, {0.1, 0.15, 0.3, 1}}),
        row("Deep Purple", D::topToBottom, {{0.15, 0.05, 0.25, 1}, {0.25, 0.1, 0.35, 1}}),
        row("Dark Slate", D::topToBottom, {{0.1, 0.12, 0.15, 1}, {0.15, 0.17, 0.2, 1}}),
        row("Sunset Glow", D::topLeftToBottomRight, {{0.4, 0.15, 0.5, 1}, {0.8, 0.3, 0.4, 1}, {0.95, 0.5, 0.3, 1}}),
        row("Ocean Breeze", D::topToBottom, {{0.1, 0.3, 0.5, 1}, {0.2, 0.5, 0.7, 1}, {0.3, 0.7, 0.8, 1}}),
        row("Purple Dream", D::topLeftToBottomRight, {{0.3, 0.2, 0.6, 1}, {0.5, 0.3, 0.8, 1}, {0.7, 0.4, 0.9, 1}}),
        row("Neon Nights", D::topRightToBottomLeft, {{0.1, 0.05, 0.2, 1}, {0.5, 0.1, 0.6, 1}, {0.1, 0.5, 0.8, 1}}),
        row("Cyber Pink", D::leftToRight, {{0.15, 0.1, 0.25, 1}, {0.8, 0.2, 0.6, 1}, {0.3, 0.1, 0.4, 1}}),
        row("Matrix Green", D::topToBottom, {{0.05, 0.1, 0.05, 1}, {0.1, 0.3, 0.15, 1}, {0.05, 0.15, 0.1, 1}}),
        row("Fire Ember", D::bottomToTop, {{0.3, 0.1, 0.05, 1}, {0.7, 0.2, 0.1, 1}, {0.9, 0.4, 0.1, 1}}),
        row("Golden Hour", D::topToBottom, {{0.6, 0.4, 0.2, 1}, {0.8, 0.6, 0.3, 1}, {0.9, 0.7, 0.4, 1}}),
        row("Arctic Blue", D::topToBottom, {{0.1, 0.2, 0.3, 1}, {0.2, 0.4, 0.5, 1}, {0.3, 0.5, 0.6, 1}}),
        row("Mint Fresh", D::topLeftToBottomRight, {{0.1, 0.3, 0.3, 1}, {0.2, 0.5, 0.5, 1}, {0.3, 0.7, 0.6, 1}}),
        row("Charcoal Gray", D::topToBottom, {{0.15, 0.15, 0.15, 1}, {0.25, 0.25, 0.25, 1}, {0.2, 0.2, 0.2, 1}}),
        row("Royal Purple", D::topToBottom, {{0.2, 0.1, 0.3, 1}, {0.3, 0.15, 0.45, 1}, {0.4, 0.2, 0.6, 1}}),
    };
    return table;
}

bool GradientPreset::matches(const std::vector<CodableColor>& sceneColors) const {
    if (sceneColors.size() != colors.size()) return false;
    auto near = [](double a, double b) { return std::fabs(a - b) <= 0.01; };
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const auto& a = colors[i];
        const auto& b = sceneColors[i];
        if (!near(a.red, b.red) || !near(a.green, b.green) || !near(a.blue, b.blue) || !near(a.alpha, b.alpha))
            return false;
    }
    return true;
}

}  // namespace orvane
