#include <gtest/gtest.h>

#include "composition/BlurFade.h"
#include "composition/CinematicZoom.h"
#include "composition/EaseInOut.h"
#include "composition/TransitionEffect.h"

namespace orvane {
namespace timing_test {

TEST(EaseInOut, EndsAndMiddle) {
    EXPECT_DOUBLE_EQ(EaseInOut::value(0), 0);
    EXPECT_DOUBLE_EQ(EaseInOut::value(1), 1);
    EXPECT_NEAR(EaseInOut::value(0.5), 0.5, 1e-6);
    EXPECT_DOUBLE_EQ(EaseInOut::value(-3), 0);
    EXPECT_DOUBLE_EQ(EaseInOut::value(7), 1);
}

TEST(EaseInOut, SlowAtTheEndsAndSymmetric) {
    // The curve (0.42, 0, 0.58, 1) at a quarter of the time: about 0.129.
    EXPECT_NEAR(EaseInOut::value(0.25), 0.1291, 5e-4);
    for (double x : {0.1, 0.2, 0.3, 0.4}) EXPECT_NEAR(EaseInOut::value(x) + EaseInOut::value(1 - x), 1, 1e-6);
    double previous = 0;
    for (int i = 1; i <= 100; ++i) {
        const double v = EaseInOut::value(i / 100.0);
        EXPECT_GE(v, previous);
        previous = v;
    }
}

TEST(TransitionPlan, DisabledOrMissingFadesQuickly) {
    SceneTransitionConfig off;
    off.enabled = false;
    off.type = TransitionType::slideLeft;
    for (const auto& config : {std::optional<SceneTransitionConfig>{}, std::optional(off)}) {
        const TransitionPlan plan = TransitionEffect::plan(config);
        EXPECT_TRUE(plan.animated);
        EXPECT_EQ(plan.type, TransitionType::fade);
        EXPECT_DOUBLE_EQ(plan.duration, 0.25);
    }
}

TEST(TransitionPlan, NoneIsAHardCut) {
    SceneTransitionConfig c;
    c.type = TransitionType::none;
    const TransitionPlan plan = TransitionEffect::plan(c);
    EXPECT_FALSE(plan.animated);
    EXPECT_DOUBLE_EQ(TransitionEffect::progress(plan, 0), 1);
}

TEST(TransitionPlan, EnabledUsesTypeAndDuration) {
    SceneTransitionConfig c;
    c.type = TransitionType::fadeScale;
    c.duration = 0.8;
    const TransitionPlan plan = TransitionEffect::plan(c);
    EXPECT_EQ(plan.type, TransitionType::fadeScale);
    EXPECT_DOUBLE_EQ(plan.duration, 0.8);
    EXPECT_NEAR(TransitionEffect::progress(plan, 0.4), 0.5, 1e-6);
    EXPECT_DOUBLE_EQ(TransitionEffect::progress(plan, 0.8), 1);
}

TEST(TransitionPoses, SlidesMoveByTheWholeCanvas) {
    const QSizeF canvas(1600, 900);
    EXPECT_EQ(TransitionEffect::entering(TransitionType::slideLeft, 0, canvas).offset, QPointF(1600, 0));
    EXPECT_EQ(TransitionEffect::leaving(TransitionType::slideLeft, 1, canvas).offset, QPointF(-1600, 0));
    EXPECT_EQ(TransitionEffect::entering(TransitionType::slideRight, 0.5, canvas).offset, QPointF(-800, 0));
    EXPECT_EQ(TransitionEffect::leaving(TransitionType::slideUp, 0.5, canvas).offset, QPointF(0, -450));
    EXPECT_EQ(TransitionEffect::entering(TransitionType::slideDown, 0.25, canvas).offset, QPointF(0, -675));
}

TEST(TransitionPoses, ScaleKeepsTheOldPictureOpaque) {
    const QSizeF canvas(1600, 900);
    const TransitionPose out = TransitionEffect::leaving(TransitionType::scale, 0.5, canvas);
    EXPECT_DOUBLE_EQ(out.opacity, 1);
    EXPECT_DOUBLE_EQ(out.scale, 0.9);
    EXPECT_DOUBLE_EQ(TransitionEffect::entering(TransitionType::scale, 0, canvas).scale, 0.8);
    const TransitionPose fs = TransitionEffect::entering(TransitionType::fadeScale, 0.5, canvas);
    EXPECT_DOUBLE_EQ(fs.scale, 0.95);
    EXPECT_DOUBLE_EQ(fs.opacity, 0.5);
}

TEST(CinematicZoom, SwingsBetweenOneAndOnePointOne) {
    CinematicZoom zoom;
    zoom.setEnabled(true, 100);
    EXPECT_DOUBLE_EQ(zoom.scaleAt(100), 1);
    EXPECT_NEAR(zoom.scaleAt(104), 1.05, 1e-6);
    EXPECT_NEAR(zoom.scaleAt(108), 1.1, 1e-12);
    EXPECT_NEAR(zoom.scaleAt(112), 1.05, 1e-6);  // reversing
    EXPECT_NEAR(zoom.scaleAt(116), 1, 1e-12);
    EXPECT_NEAR(zoom.scaleAt(124), 1.1, 1e-12);
}

TEST(CinematicZoom, TurningOffEasesBackOverEightSeconds) {
    CinematicZoom zoom;
    zoom.setEnabled(true, 0);
    double t = 0;
    while (zoom.scaleAt(t) < 1.07) t += 0.001;  // the scale stands at 1.07
    zoom.setEnabled(false, t);
    EXPECT_NEAR(zoom.scaleAt(t), 1.07, 1e-3);
    EXPECT_NEAR(zoom.scaleAt(t + 4), 1.035, 1e-3);
    EXPECT_DOUBLE_EQ(zoom.scaleAt(t + 8), 1);
    EXPECT_DOUBLE_EQ(zoom.scaleAt(t + 20), 1);
}

TEST(CinematicZoom, OffFromTheStartStaysAtOne) {
    CinematicZoom zoom;
    zoom.setEnabled(false, 5);
    EXPECT_DOUBLE_EQ(zoom.scaleAt(9), 1);
}

TEST(BlurFade, FadesOverThreeTenthsOfASecond) {
    BlurFade blur;
    blur.setActive(false, 0);
    EXPECT_DOUBLE_EQ(blur.amountAt(0), 0);
    blur.setActive(true, 10);
    EXPECT_DOUBLE_EQ(blur.amountAt(10), 0);
    EXPECT_NEAR(blur.amountAt(10.15), 0.5, 1e-6);
    EXPECT_DOUBLE_EQ(blur.amountAt(10.3), 1);
    EXPECT_DOUBLE_EQ(blur.radiusAt(11), 20);
    blur.setActive(false, 11);
    EXPECT_NEAR(blur.radiusAt(11.15), 10, 1e-4);
    EXPECT_DOUBLE_EQ(blur.radiusAt(11.3), 0);
}

TEST(BlurFade, AppearsAtFullStrengthWhenAlreadyOn) {
    BlurFade blur;
    blur.setActive(true, 3);
    EXPECT_DOUBLE_EQ(blur.amountAt(3), 1);
}

}  // namespace
}  // namespace orvane
