#include "composition/TransitionEffect.h"

#include "composition/EaseInOut.h"

namespace orvane {

TransitionPlan TransitionEffect::plan(const std::optional<SceneTransitionConfig>& config) {
    if (!config || !config->enabled) return {TransitionType::fade, kDisabledFadeDuration, true};
    if (config->type == TransitionType::none) return {TransitionType::none, 0, false};
    return {config->type, config->duration, true};
}

double TransitionEffect::progress(const TransitionPlan& plan, double elapsed) {
    if (!plan.animated || plan.duration <= 0) return 1;
    return EaseInOut::value(elapsed / plan.duration);
}

TransitionPose TransitionEffect::entering(TransitionType type, double p, QSizeF canvas) {
    const double w = canvas.width();
    const double h = canvas.height();
    const double rest = 1 - p;
    TransitionPose pose;
    switch (type) {
    case TransitionType::none: break;
    case TransitionType::fade:
    case TransitionType::crossDissolve: pose.opacity = p; break;
    case TransitionType::slideLeft: pose.offset = {rest * w, 0}; break;
    case TransitionType::slideRight: pose.offset = {-rest * w, 0}; break;
    case TransitionType::slideUp: pose.offset = {0, rest * h}; break;
    case TransitionType::slideDown: pose.offset = {0, -rest * h}; break;
    case TransitionType::scale: pose.scale = 0.8 + 0.2 * p; break;
    case TransitionType::fadeScale:
        pose.scale = 0.9 + 0.1 * p;
        pose.opacity = p;
        break;
    }
    return pose;
}

TransitionPose TransitionEffect::leaving(TransitionType type, double p, QSizeF canvas) {
    const double w = canvas.width();
    const double h = canvas.height();
    TransitionPose pose;
    switch (type) {
    case TransitionType::none: pose.opacity = 0; break;
    case TransitionType::fade:
    case TransitionType::crossDissolve: pose.opacity = 1 - p; break;
    case TransitionType::slideLeft: pose.offset = {-p * w, 0}; break;
    case TransitionType::slideRight: pose.offset = {p * w, 0}; break;
    case TransitionType::slideUp: pose.offset = {0, -p * h}; break;
    case TransitionType::slideDown: pose.offset = {0, p * h}; break;
    case TransitionType::scale:
        // No fade: the old picture stays opaque while it shrinks, and goes
        // when the transition ends.
        pose.scale = 1 - 0.2 * p;
        break;
    case TransitionType::fadeScale:
        pose.scale = 1 - 0.1 * p;
        pose.opacity = 1 - p;
        break;
    }
    return pose;
}

}  // namespace orvane
