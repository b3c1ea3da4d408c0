#pragma once

#include <QSizeF>
#include <functional>

#include "composition/TransitionEffect.h"

class QPainter;

namespace orvane {

// Plays a change of the program stage: the leaving and the entering
// composition are both drawn, each in its pose, until the curve ends. The
// stage keeps the two renderers and hands their painting in.
class TransitionPlayer {
public:
    using PaintComposition = std::function<void(QPainter&)>;

    void start(const TransitionPlan& plan, double now);
    // Whether the leaving composition still shows at `now`.
    bool isActive(double now) const;
    double progress(double now) const;
    const TransitionPlan& plan() const { return plan_; }

    // Draws the frame at `now`; after the end only the entering composition.
    void paint(QPainter& painter, QSizeF canvas, double now, const PaintComposition& leaving,
               const PaintComposition& entering) const;

    // One frame at an eased progress: the leaving picture below, the
    // entering one above, each with its own group opacity, offset and scale.
    static void paintFrame(QPainter& painter, QSizeF canvas, TransitionType type, double progress,
                           const PaintComposition& leaving, const PaintComposition& entering);

private:
    TransitionPlan plan_{TransitionType::none, 0, false};
    double startedAt_ = 0;
    bool started_ = false;
};

}  // namespace orvane
