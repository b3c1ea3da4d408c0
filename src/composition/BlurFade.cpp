#include "composition/BlurFade.h"

#include "composition/EaseInOut.h"

namespace orvane {

void BlurFade::setActive(bool active, double now) {
    if (!initialised_) {
        // A composition that appears with blur already on shows it at once.
        initialised_ = true;
        active_ = active;
        from_ = active ? 1 : 0;
        since_ = now - kDuration;
        return;
    }
    if (active == active_) return;
    from_ = amountAt(now);
    active_ = active;
    since_ = now;
}

double BlurFade::amountAt(double now) const {
    const double target = active_ ? 1 : 0;
    const double eased = EaseInOut::value((now - since_) / kDuration);
    return from_ + (target - from_) * eased;
}

}  // namespace orvane
