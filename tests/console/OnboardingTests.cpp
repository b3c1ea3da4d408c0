#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/SymbolButton.h"
#include "console/main_window/ContentView.h"
#include "console/onboarding/OnboardingView.h"
#include "console/onboarding/PermissionsManager.h"

namespace orvane {
namespace onboarding_tests {

using test::Session;

TEST(ConsoleOnboarding, FirstStartOpensTheAssistantAfterHalfASecond) {
    Session s;
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1200, 800);
    root.show();
    QTest::qWait(200);
    EXPECT_FALSE(root.showOnboarding());
    ASSERT_TRUE(QTest::qWaitFor([&] { return root.showOnboarding(); }, 2000));
    OnboardingView* onboarding = root.onboardingView();
    ASSERT_NE(onboarding, nullptr);
    EXPECT_TRUE(root.showPresetSelection());

    // Step 0 has no "Atrás"; step 1 with the right granted reads "Continuar".
    EXPECT_FALSE(onboarding->backButton()->isVisibleTo(onboarding));
    QTest::mouseClick(onboarding->mainButton(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return onboarding->permissionsManager().screenCapturePermissionStatus() == PermissionStatus::granted;
    }, 2000));
    EXPECT_EQ(onboarding->currentStep(), 1);
    EXPECT_EQ(onboarding->mainButton()->text(), QStringLiteral("Continuar"));
    EXPECT_FALSE(onboarding->skipButton()->isVisibleTo(onboarding));
    QTest::mouseClick(onboarding->mainButton(), Qt::LeftButton);
    EXPECT_EQ(onboarding->mainButton()->text(), QStringLiteral("Start Using"));
    QTest::mouseClick(onboarding->mainButton(), Qt::LeftButton);
    EXPECT_FALSE(root.showOnboarding());
    EXPECT_TRUE(s.settings().value(PermissionsManager::completedKey).toBool());
}

TEST(ConsoleOnboarding, CompletedAndGrantedStartsWithoutTheAssistant) {
    Session s;
    s.settings().setValue(PermissionsManager::completedKey, true);
    ContentView root(*s.streamManager, s.windowManager);
    root.show();
    QTest::qWait(800);
    EXPECT_FALSE(root.showOnboarding());
}

TEST(ConsoleOnboarding, MissingRightOffersSkipAndKeepsNeedingTheAssistant) {
    Session s;
    PermissionsManager::setDefaultProbe([] { return PermissionStatus::denied; });
    OnboardingView onboarding(s.settings());
    onboarding.show();
    QApplication::processEvents();
    onboarding.nextStep();
    EXPECT_EQ(onboarding.mainButton()->text(), QStringLiteral("Grant Permission"));
    EXPECT_TRUE(onboarding.skipButton()->isVisibleTo(&onboarding));
    QTest::mouseClick(onboarding.skipButton(), Qt::LeftButton);
    EXPECT_EQ(onboarding.currentStep(), 2);
    EXPECT_FALSE(onboarding.skipButton()->isVisibleTo(&onboarding));
    EXPECT_FALSE(onboarding.backButton()->isVisibleTo(&onboarding));
    PermissionsManager later(s.settings());
    QApplication::processEvents();
    EXPECT_TRUE(later.needsOnboarding());
    PermissionsManager::setDefaultProbe({});
}

}  // namespace
}  // namespace orvane
