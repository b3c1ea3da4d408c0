#include "composition/CameraMask.h"

#include <algorithm>
#include <cmath>

namespace orvane {

std::optional<CameraMask::Stops> CameraMask::stops(SceneLayout layout) {
    switch (layout) {
    case SceneLayout::splitHorizontal:
    case SceneLayout::cameraLeft: return Stops{1, 1, 1, 1, 0.8, 0.5, 0.2, 0};
    case SceneLayout::cameraRight: return Stops{0, 0.2, 0.5, 0.8, 1, 1, 1, 1};
    default: return std::nullopt;
    }
}

double CameraMask::alphaAt(SceneLayout layout, double fraction) {
    const auto s = stops(layout);
    if (!s) return 1;
    const double x = std::clamp(fraction, 0.0, 1.0) * 7.0;
    const int i = std::min(6, static_cast<int>(std::floor(x)));
    const double t = x - i;
    return (*s)[i] + ((*s)[i + 1] - (*s)[i]) * t;
}

}  // namespace orvane
