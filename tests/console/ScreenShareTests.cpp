#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/bars/WindowManager.h"

namespace orvane {
namespace screen_share_tests {

TEST(ScreenShareSetting, AChangeBeforeTheWindowExistsIsAppliedWhenItAppears) {
    test::ensureApplication();
    WindowManager manager;
    {
        test::LogCapture log;
        manager.setIsVisibleInScreenShare(true);
        manager.setIsAlwaysOnTop(true);
        QApplication::processEvents();
        // No window yet: nothing is applied, nothing is said.
        EXPECT_EQ(log.text().find("Visible in screen share"), std::string::npos);
    }

    QWidget window;
    test::LogCapture log;
    window.show();
    manager.setupMainWindow(&window);
    EXPECT_TRUE(QTest::qWaitFor([&] { return manager.mainWindow() == &window; }, 3000));
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_NE(log.text().find("🪟 Visible in screen share: on"), std::string::npos) << log.text();
}

TEST(ScreenShareSetting, FollowsTheSwitchOnceTheWindowIsThere) {
    test::ensureApplication();
    WindowManager manager;
    QWidget window;
    window.show();
    manager.setupMainWindow(&window);
    EXPECT_TRUE(QTest::qWaitFor([&] { return manager.mainWindow() == &window; }, 3000));
    test::LogCapture log;
    manager.setIsVisibleInScreenShare(true);
    manager.setIsVisibleInScreenShare(false);
    const std::string said = log.text();
    const auto on = said.find("🪟 Visible in screen share: on");
    const auto off = said.find("🪟 Visible in screen share: off");
    EXPECT_NE(on, std::string::npos) << said;
    EXPECT_NE(off, std::string::npos) << said;
    EXPECT_LT(on, off);
}

}  // namespace screen_share_tests
}  // namespace orvane
