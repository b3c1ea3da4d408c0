#include "composition/EaseInOut.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double kX1 = 0.42;
constexpr double kX2 = 0.58;

// One coordinate of a cubic Bézier from 0 to 1 with inner controls a and b.
double bezier(double s, double a, double b) {
    const double u = 1 - s;
    return 3 * u * u * s * a + 3 * u * s * s * b + s * s * s;
}

double bezierSlope(double s, double a, double b) {
    const double u = 1 - s;
    return 3 * u * u * a + 6 * u * s * (b - a) + 3 * s * s * (1 - b);
}

}  // namespace

double EaseInOut::value(double fraction) {
    if (!std::isfinite(fraction)) return fraction > 0 ? 1 : 0;  // NaN counts as not started
    const double x = std::clamp(fraction, 0.0, 1.0);
    if (x <= 0) return 0;
    if (x >= 1) return 1;
    // Solve bezier(s) = x for the curve parameter: Newton steps, with
    // bisection as the fallback where the slope is flat.
    double s = x;
    for (int i = 0; i < 8; ++i) {
        const double error = bezier(s, kX1, kX2) - x;
        if (std::abs(error) < 1e-7) break;
        const double slope = bezierSlope(s, kX1, kX2);
        if (std::abs(slope) < 1e-6) break;
        s = std::clamp(s - error / slope, 0.0, 1.0);
    }
    if (std::abs(bezier(s, kX1, kX2) - x) > 1e-6) {
        double lo = 0;
        double hi = 1;
        for (int i = 0; i < 40; ++i) {
            s = (lo + hi) / 2;
            (bezier(s, kX1, kX2) < x ? lo : hi) = s;
        }
    }
    return bezier(s, 0.0, 1.0);
}

}  // namespace orvane
