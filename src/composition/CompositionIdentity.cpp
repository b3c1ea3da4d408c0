#include "composition/CompositionIdentity.h"

#include <cstdio>

namespace orvane {

std::string CompositionIdentity::key(const StreamingScene& scene, double sceneUpdateTimestamp) {
    std::string out = scene.id.toString();
    out += '-';
    out += scene.selectedSourceId ? scene.selectedSourceId->toString() : "none";
    out += '-';
    out += scene.brandingEnabled ? "true" : "false";
    out += '-';
    out += std::to_string(scene.sources.size());
    out += '-';
    for (std::size_t i = 0; i < scene.sources.size(); ++i) {
        if (i > 0) out += '-';
        out += scene.sources[i].id.toString();
    }
    out += '-';
    out += toString(scene.backgroundType);
    out += '-';
    out += std::to_string(scene.gradientColors.size());
    out += '-';
    out += toString(scene.gradientDirection);
    out += '-';
    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "%.6f", sceneUpdateTimestamp);
    out += stamp;
    return out;
}

}  // namespace orvane
