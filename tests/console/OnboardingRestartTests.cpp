#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/main_window/ContentView.h"
#include "console/onboarding/OnboardingView.h"
#include "console/onboarding/PermissionsManagementView.h"
#include "console/onboarding/PermissionsManager.h"

namespace orvane {
namespace onboarding_restart_tests {

using test::Session;

// Installs a probe for the test's length and puts the default back after.
struct ProbeOverride {
    explicit ProbeOverride(PermissionStatus answer) {
        PermissionsManager::setDefaultProbe([answer] { return answer; });
    }
    ~ProbeOverride() { PermissionsManager::setDefaultProbe({}); }
};

// A later start of the application on the same settings file.
std::unique_ptr<StreamManager> restart(Session& s) {
    s.settings().sync();
    return std::make_unique<StreamManager>(
        *s.storage, std::make_unique<QSettings>(s.dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat));
}

TEST(ConsoleOnboardingRestart, AWithdrawnRightOpensTheAssistantAgain) {
    Session s;
    s.settings().setValue(PermissionsManager::completedKey, true);
    ProbeOverride denied(PermissionStatus::denied);
    std::unique_ptr<StreamManager> later = restart(s);
    ContentView root(*later, s.windowManager);
    root.resize(1200, 800);
    root.show();
    QTest::qWait(200);
    EXPECT_FALSE(root.showOnboarding());  // not before half a second
    ASSERT_TRUE(QTest::qWaitFor([&] { return root.showOnboarding(); }, 2000));
    ASSERT_NE(root.onboardingView(), nullptr);
    EXPECT_TRUE(root.onboardingView()->isVisible());
    EXPECT_TRUE(root.permissionsManager().hasCompletedOnboarding());
    EXPECT_EQ(root.permissionsManager().screenCapturePermissionStatus(), PermissionStatus::denied);
}

TEST(ConsoleOnboardingRestart, ResetInThePermissionsPanelBringsTheAssistantBackNextStart) {
    Session s;
    s.settings().setValue(PermissionsManager::completedKey, true);
    {
        ContentView root(*s.streamManager, s.windowManager);
        root.resize(1200, 800);
        root.show();
        QTest::qWait(700);
        ASSERT_FALSE(root.showOnboarding());

        root.showPermissionsManagement();
        QApplication::processEvents();
        PermissionsManagementView* panel = root.findChild<PermissionsManagementView*>();
        ASSERT_NE(panel, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return panel->isVisible(); }, 2000));
        QAbstractButton* reset = nullptr;
        for (QAbstractButton* b : panel->findChildren<QAbstractButton*>())
            if (b->accessibleName() == QStringLiteral("Reset Welcome Assistant")) reset = b;
        ASSERT_NE(reset, nullptr);
        QTest::mouseClick(reset, Qt::LeftButton);
        EXPECT_FALSE(s.settings().value(PermissionsManager::completedKey).toBool());
        // The assistant opens inside the panel at once.
        OnboardingView* inPanel = panel->findChild<OnboardingView*>();
        ASSERT_NE(inPanel, nullptr);
        EXPECT_TRUE(QTest::qWaitFor([&] { return inPanel->isVisible(); }, 2000));
        panel->close();
    }

    std::unique_ptr<StreamManager> later = restart(s);
    ContentView root(*later, s.windowManager);
    root.resize(1200, 800);
    root.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return root.showOnboarding(); }, 2000));
    EXPECT_NE(root.onboardingView(), nullptr);
}

}  // namespace
}  // namespace orvane
