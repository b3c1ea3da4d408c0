#pragma once

#include <string>
#include <vector>

#include "document/CodableColor.h"
#include "document/DocumentEnums.h"
#include "document/HashCombine.h"
#include "document/Uuid.h"

namespace orvane {

// A named background gradient offered by the picker; never stored. Choosing
// one copies its colours and direction into the scene.
struct GradientPreset {
    Uuid id;
    std::string name;
    std::vector<CodableColor> colors;
    GradientDirection direction = GradientDirection::topToBottom;

    // The fifteen rows of the picker, in order. Ids are made fresh once per run.
    static const std::vector<GradientPreset>& presets();

    // True when `sceneColors` has as many stops as this row and every
    // component is within 0.01 of it: how the picker recognises its row.
    bool matches(const std::vector<CodableColor>& sceneColors) const;

    friend bool operator==(const GradientPreset&, const GradientPreset&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::GradientPreset> {
    std::size_t operator()(const orvane::GradientPreset& g) const noexcept {
        std::size_t colors = 0;
        for (const auto& c : g.colors) colors = orvane::hashFields(colors, c);
        return orvane::hashFields(g.id, g.name, colors, g.direction);
    }
};
