#include <QApplication>
#include <QEasingCurve>
#include <QLabel>
#include <QPropertyAnimation>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/onboarding/OnboardingView.h"

namespace orvane {
namespace onboarding_animation_tests {

using test::Session;

// Where the step's title sits, in the assistant's coordinates.
int titleTop(const OnboardingView& view) {
    for (QLabel* label : view.stepContent()->findChildren<QLabel*>())
        if (label->text() == OnboardingView::steps()[std::size_t(view.currentStep())].title)
            return label->mapTo(&view, QPoint(0, 0)).y();
    return -1;
}

TEST(OnboardingAnimation, EachStepsContentEntersEasedOutOverHalfASecond) {
    Session s;
    OnboardingView view(s.settings());
    view.resize(900, 700);
    view.show();
    QApplication::processEvents();
    QPropertyAnimation* entry = view.contentAnimation();
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->targetObject(), &view);
    EXPECT_EQ(entry->propertyName(), QByteArray("contentProgress"));
    EXPECT_EQ(entry->duration(), 500);
    EXPECT_DOUBLE_EQ(entry->startValue().toDouble(), 0.0);
    EXPECT_DOUBLE_EQ(entry->endValue().toDouble(), 1.0);

    // Ease-out: ahead of a straight line all the way, and quickest at the start.
    const QEasingCurve curve = entry->easingCurve();
    for (int i = 1; i < 10; ++i) EXPECT_GT(curve.valueForProgress(i / 10.0), i / 10.0) << i;
    EXPECT_GT(curve.valueForProgress(0.1) - curve.valueForProgress(0.0),
              curve.valueForProgress(1.0) - curve.valueForProgress(0.9));
    EXPECT_NEAR(curve.valueForProgress(1.0), 1.0, 1e-9);

    // Let the first entry finish, then go on a step and follow the new one
    // frame by frame through the animation's own clock.
    entry->setCurrentTime(entry->duration());
    QApplication::processEvents();
    EXPECT_DOUBLE_EQ(view.contentOpacity(), 1.0);

    view.nextStep();
    EXPECT_EQ(entry->state(), QAbstractAnimation::Running);
    entry->pause();
    QApplication::processEvents();  // the new step's layout settles
    entry->setCurrentTime(0);
    EXPECT_DOUBLE_EQ(view.contentOpacity(), 0.0);
    const int startTop = titleTop(view);

    entry->setCurrentTime(250);
    const double halfway = curve.valueForProgress(0.5);
    EXPECT_NEAR(view.contentOpacity(), halfway, 1e-6);
    EXPECT_NEAR(view.contentProgress(), halfway, 1e-6);
    const int halfwayTop = titleTop(view);

    entry->setCurrentTime(500);  // the end: the animation stops there
    EXPECT_DOUBLE_EQ(view.contentOpacity(), 1.0);
    const int restingTop = titleTop(view);
    ASSERT_GE(restingTop, 0);
    EXPECT_EQ(startTop, restingTop + OnboardingView::contentEntryRise);
    EXPECT_GT(halfwayTop, restingTop);
    EXPECT_LT(halfwayTop, startTop);

    // Going back plays the same entry.
    view.previousStep();
    EXPECT_EQ(entry->state(), QAbstractAnimation::Running);
    EXPECT_LT(view.contentProgress(), 1.0);
}

}  // namespace onboarding_animation_tests
}  // namespace orvane
