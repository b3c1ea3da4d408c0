#pragma once

#include <array>
#include <optional>

#include "document/DocumentEnums.h"

namespace orvane {

// The soft alpha mask over the camera layer in the side layouts: a
// horizontal gradient across the whole canvas width with eight evenly spaced
// stops. Other layouts draw the camera unmasked (fullCamera's mask is opaque,
// the PIP layouts have none).
class CameraMask {
public:
    using Stops = std::array<double, 8>;

    // The alpha at each stop, left to right, or none for an unmasked layout.
    static std::optional<Stops> stops(SceneLayout layout);

    // Position of stop i, 0 to 1 across the canvas.
    static double stopPosition(int index) { return index / 7.0; }

    // The mask's alpha at a fraction of the canvas width, interpolated linearly
    // between the stops; 1 for unmasked layouts.
    static double alphaAt(SceneLayout layout, double fraction);
};

}  // namespace orvane
