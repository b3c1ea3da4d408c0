#include "composition/CinematicZoom.h"

#include <algorithm>
#include <cmath>

#include "composition/EaseInOut.h"

namespace orvane {

void CinematicZoom::setEnabled(bool enabled, double now) {
    if (initialised_ && enabled == enabled_) return;
    if (initialised_ && !enabled) {
        returnFrom_ = scaleAt(now);
    } else {
        returnFrom_ = 1;
    }
    initialised_ = true;
    enabled_ = enabled;
    since_ = now;
}

void CinematicZoom::restart(double now) {
    since_ = now;
    returnFrom_ = 1;
}

double CinematicZoom::scaleAt(double now) const {
    const double elapsed = std::max(0.0, now - since_);
    if (!enabled_) {
        if (returnFrom_ == 1) return 1;
        return returnFrom_ + (1 - returnFrom_) * EaseInOut::value(elapsed / kHalfPeriod);
    }
    const double phase = std::fmod(elapsed, 2 * kHalfPeriod);
    const double fraction = phase < kHalfPeriod ? phase / kHalfPeriod : 2 - phase / kHalfPeriod;
    return 1 + (kMaxScale - 1) * EaseInOut::value(fraction);
}

}  // namespace orvane
