#pragma once

namespace orvane {

// The ease-in-out timing curve used by every animation of the composition:
// the cubic Bézier with control points (0.42, 0) and (0.58, 1).
class EaseInOut {
public:
    // Progress of the value for a fraction of the duration, both 0 to 1;
    // fractions outside are clamped.
    static double value(double fraction);
};

}  // namespace orvane
