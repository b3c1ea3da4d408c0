#pragma once

#include <QPointF>
#include <QSizeF>
#include <optional>

#include "document/SceneTransitionConfig.h"

namespace orvane {

// How one of the two pictures of a transition stands at a moment: group
// opacity, offset in canvas points, and scale about the canvas centre.
struct TransitionPose {
    double opacity = 1;
    QPointF offset;
    double scale = 1;
};

// What a change of the program scene plays: the effect, its duration, and
// whether it animates at all (type "None" cuts).
struct TransitionPlan {
    TransitionType type = TransitionType::fade;
    double duration = 0.25;  // seconds
    bool animated = true;
};

class TransitionEffect {
public:
    static constexpr double kDisabledFadeDuration = 0.25;

    // No configuration, or a disabled one, gives a quick opacity fade; only
    // an enabled "None" gives a hard cut.
    static TransitionPlan plan(const std::optional<SceneTransitionConfig>& config);

    // The poses at an eased progress from 0 (start) to 1 (end).
    static TransitionPose entering(TransitionType type, double progress, QSizeF canvas);
    static TransitionPose leaving(TransitionType type, double progress, QSizeF canvas);

    // Eased progress of a plan `elapsed` seconds after it started.
    static double progress(const TransitionPlan& plan, double elapsed);
};

}  // namespace orvane
