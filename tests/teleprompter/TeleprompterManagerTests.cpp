#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "TeleprompterTestSupport.h"
#include "teleprompter/ScrollTicker.h"
#include "teleprompter/TeleprompterWindow.h"

namespace orvane {
namespace teleprompter_manager_tests {

using test::LogCapture;
using test::TeleprompterFixture;

int topLevelTeleprompters() {
    int count = 0;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (qobject_cast<TeleprompterWindow*>(widget) && widget->isVisible()) ++count;
    return count;
}

TEST(TeleprompterManager, OpensOneWindowWithTitleAndSize) {
    TeleprompterFixture f;
    LogCapture log;
    f.manager->openTeleprompterWindow();
    const std::string text = log.text();
    ASSERT_NE(f.manager->teleprompterWindow(), nullptr);
    EXPECT_TRUE(f.manager->isTeleprompterWindowOpen());
    EXPECT_EQ(f.manager->teleprompterWindow()->windowTitle(), QStringLiteral("Teleprompter"));
    EXPECT_EQ(f.manager->teleprompterWindow()->size(), QSize(800, 200));
    EXPECT_TRUE(f.manager->teleprompterWindow()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(text,
              "📜 Teleprompter set to HIDDEN from screen share\n"
              "📜 Teleprompter window opened\n");
}

TEST(TeleprompterManager, OpeningTwiceRaisesTheSameWindowWithoutNewSettings) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    QWidget* first = f.manager->teleprompterWindow();
    TeleprompterConfig changed = f.settings();
    changed.alwaysOnTop = false;
    changed.width = 1200;
    f.setSettings(changed);
    LogCapture log;
    f.manager->openTeleprompterWindow();
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(f.manager->teleprompterWindow(), first);
    EXPECT_EQ(topLevelTeleprompters(), 1);
    EXPECT_TRUE(first->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(first->width(), 800);
}

TEST(TeleprompterManager, OpeningWithoutSettingsWarnsAndChangesNothing) {
    TeleprompterFixture f(false);
    LogCapture log;
    f.manager->openTeleprompterWindow();
    EXPECT_EQ(log.text(), "⚠️ No teleprompter configuration found\n");
    EXPECT_FALSE(f.manager->isTeleprompterWindowOpen());
    EXPECT_EQ(f.manager->teleprompterWindow(), nullptr);
}

TEST(TeleprompterManager, NormalLevelAndVisibleInShare) {
    TeleprompterFixture f;
    TeleprompterConfig settings = f.settings();
    settings.alwaysOnTop = false;
    settings.hideFromScreenShare = false;
    f.setSettings(settings);
    LogCapture log;
    f.manager->openTeleprompterWindow();
    EXPECT_NE(log.text().find("📜 Teleprompter set to VISIBLE in screen share\n"), std::string::npos);
    EXPECT_FALSE(f.manager->teleprompterWindow()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST(TeleprompterManager, UpdateWindowLevelAppliesAndLogs) {
    TeleprompterFixture f;
    {
        LogCapture quiet;
        f.manager->updateWindowLevel();  // no window: nothing, silently
        EXPECT_EQ(quiet.text(), "");
    }
    f.manager->openTeleprompterWindow();
    TeleprompterConfig settings = f.settings();
    settings.alwaysOnTop = false;
    settings.hideFromScreenShare = false;
    settings.width = 1500;
    f.setSettings(settings);
    LogCapture log;
    f.manager->updateWindowLevel();
    EXPECT_EQ(log.text(),
              "📜 Teleprompter updated to VISIBLE in screen share\n"
              "📜 Teleprompter window updated - Always on Top: false, Hide from Share: false\n");
    EXPECT_FALSE(f.manager->teleprompterWindow()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(f.manager->teleprompterWindow()->width(), 800);  // the size is not touched
}

TEST(TeleprompterManager, SpeedHalfMovesFifteenPointsASecondAndThreeMovesNinety) {
    for (const auto& [speed, expected] : {std::pair{0.5, 15.0}, std::pair{3.0, 90.0}, std::pair{1.0, 30.0}}) {
        TeleprompterFixture f;
        TeleprompterConfig settings = f.settings();
        settings.scrollSpeed = speed;
        f.setSettings(settings);
        f.manager->startScrolling();
        f.tick(ScrollTicker::ticksPerSecond);
        EXPECT_NEAR(f.manager->scrollOffset(), expected, 1e-9) << "speed " << speed;
        f.manager->stopScrolling();
    }
}

TEST(TeleprompterManager, StartLogsTheSpeedAsADecimal) {
    TeleprompterFixture f;
    LogCapture log;
    f.manager->startScrolling();
    EXPECT_EQ(log.text(),
              "📜 Teleprompter scrolling stopped\n"
              "📜 Teleprompter scrolling started at speed: 1.0x\n");
}

TEST(TeleprompterManager, StartWhileScrollingKeepsOneTimerAndTheOffset) {
    TeleprompterFixture f;
    f.manager->startScrolling();
    f.tick(10);
    const double offset = f.manager->scrollOffset();
    EXPECT_DOUBLE_EQ(offset, 5.0);
    f.manager->startScrolling();
    EXPECT_TRUE(f.manager->isScrolling());
    EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), offset);
    const auto tickers = f.manager->findChildren<ScrollTicker*>();
    ASSERT_EQ(tickers.size(), 1);
    EXPECT_TRUE(tickers.front()->isActive());
    QSignalSpy ticks(tickers.front(), &ScrollTicker::tick);
    QTest::qWait(120);
    EXPECT_GE(ticks.count(), 2);
    EXPECT_LE(ticks.count(), 12);  // one clock at 60 Hz, not two
}

TEST(TeleprompterManager, ScrollingRunsWithoutAWindow) {
    TeleprompterFixture f;
    f.manager->startScrolling();
    EXPECT_FALSE(f.manager->isTeleprompterWindowOpen());
    QSignalSpy moved(f.manager.get(), &TeleprompterManager::scrollOffsetChanged);
    EXPECT_TRUE(moved.wait(1000));
    EXPECT_GT(f.manager->scrollOffset(), 0.0);
}

TEST(TeleprompterManager, ChangedSpeedTakesEffectAtTheNextStart) {
    TeleprompterFixture f;
    f.manager->startScrolling();
    TeleprompterConfig settings = f.settings();
    settings.scrollSpeed = 2.0;
    f.setSettings(settings);
    f.tick(60);
    EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), 30.0);
    f.manager->startScrolling();
    f.tick(60);
    EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), 90.0);
}

TEST(TeleprompterManager, StoppingKeepsTheOffsetClosingResetsIt) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    f.manager->startScrolling();
    f.tick(20);
    f.manager->stopScrolling();
    EXPECT_FALSE(f.manager->isScrolling());
    EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), 10.0);
    f.manager->closeTeleprompterWindow();
    EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), 0.0);
    EXPECT_FALSE(f.manager->isTeleprompterWindowOpen());
}

TEST(TeleprompterManager, ClosingByProgramPassesThroughTheWindowsOwnClose) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    LogCapture log;
    f.manager->closeTeleprompterWindow();
    EXPECT_EQ(log.text(),
              "📜 Teleprompter scrolling stopped\n"
              "📜 Teleprompter scrolling stopped\n"
              "📜 Teleprompter window closed by user\n"
              "📜 Teleprompter window closed\n");
    EXPECT_EQ(f.manager->teleprompterWindow(), nullptr);
}

TEST(TeleprompterManager, ClosingByTheCloseBox) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    f.manager->startScrolling();
    f.tick(4);
    QWidget* window = f.manager->teleprompterWindow();
    LogCapture log;
    window->close();  // as the title bar's close box does
    EXPECT_EQ(log.text(),
              "📜 Teleprompter scrolling stopped\n"
              "📜 Teleprompter window closed by user\n");
    EXPECT_FALSE(f.manager->isTeleprompterWindowOpen());
    EXPECT_FALSE(f.manager->isScrolling());
    EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), 0.0);
}

TEST(TeleprompterManager, OtherWindowsClosingIsIgnored) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    QWidget other;
    LogCapture log;
    f.manager->windowWillClose(&other);
    EXPECT_EQ(log.text(), "");
    EXPECT_TRUE(f.manager->isTeleprompterWindowOpen());
}

TEST(TeleprompterManager, AutoScrollStartsAtEveryOpenFromZero) {
    TeleprompterFixture f;
    TeleprompterConfig settings = f.settings();
    settings.isScrolling = true;
    f.setSettings(settings);
    for (int round = 0; round < 2; ++round) {
        f.manager->openTeleprompterWindow();
        EXPECT_TRUE(f.manager->isScrolling()) << "round " << round;
        EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), 0.0) << "round " << round;
        f.tick(6);
        EXPECT_DOUBLE_EQ(f.manager->scrollOffset(), 3.0);
        f.manager->closeTeleprompterWindow();
    }
}

TEST(TeleprompterManager, ASavedFrameWinsOverTheSettingsSize) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    f.manager->teleprompterWindow()->resize(640, 300);
    f.manager->closeTeleprompterWindow();
    TeleprompterConfig settings = f.settings();
    settings.width = 1000;
    settings.height = 400;
    f.setSettings(settings);
    f.manager->openTeleprompterWindow();
    EXPECT_EQ(f.manager->teleprompterWindow()->size(), QSize(640, 300));
}

TEST(TeleprompterManager, TeardownClosesTheWindow) {
    auto f = std::make_unique<TeleprompterFixture>();
    f->manager->openTeleprompterWindow();
    QPointer<QWidget> window = f->manager->teleprompterWindow();
    LogCapture log;
    f->manager.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_NE(log.text().find("📜 Teleprompter window closed\n"), std::string::npos);
    EXPECT_TRUE(window.isNull());
}

// A simulated clock drives the schedule: every tick waits for its own
// deadline, and a stall is made up at once instead of pushing the rest back.
TEST(ScrollTicker, AMinuteOfTicksHoldsThreeThousandSixHundredEvenAfterAStall) {
    constexpr qint64 msNs = 1'000'000;
    qint64 nowNs = 0;
    qint64 fired = 0;
    bool stalled = false;
    while (true) {
        nowNs += ScrollTicker::waitBeforeNextTick(fired, nowNs) * msNs;
        // Timers round down to whole milliseconds; the tick fires when its
        // deadline has passed, as a timer that fired early would re-arm.
        const qint64 due = (fired + 1) * 1'000'000'000 / ScrollTicker::ticksPerSecond;
        if (nowNs < due) nowNs = due;
        if (nowNs > 60'000 * msNs) break;
        ++fired;
        if (!stalled && nowNs >= 10'000 * msNs) {
            nowNs += 700 * msNs;  // the main thread was busy for 0.7 s
            stalled = true;
        }
    }
    EXPECT_TRUE(stalled);
    EXPECT_EQ(fired, 60 * ScrollTicker::ticksPerSecond);
}

TEST(ScrollTicker, WaitsForTheNextDeadlineAndNotAtAllWhenBehind) {
    EXPECT_EQ(ScrollTicker::waitBeforeNextTick(0, 0), 16);       // first tick at 16.7 ms
    EXPECT_EQ(ScrollTicker::waitBeforeNextTick(59, 0), 1000);    // the sixtieth at one second
    EXPECT_EQ(ScrollTicker::waitBeforeNextTick(1, 20'000'000), 13);
    EXPECT_EQ(ScrollTicker::waitBeforeNextTick(1, 500'000'000), 0);  // behind: at once
}

// With real timers a busy machine may delay ticks, but the ticker never
// runs ahead of its deadlines.
TEST(ScrollTicker, RealTicksArriveAndNeverRunAhead) {
    TeleprompterFixture f;  // for the application
    ScrollTicker ticker;
    QSignalSpy ticks(&ticker, &ScrollTicker::tick);
    QElapsedTimer elapsed;
    elapsed.start();
    ticker.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks.count() >= 10; }, 10'000));
    ticker.stop();
    const double deadlinesPassed = elapsed.elapsed() / 1000.0 * ScrollTicker::ticksPerSecond;
    EXPECT_LE(ticks.count(), deadlinesPassed + 1);
    const int stoppedAt = ticks.count();
    QTest::qWait(50);
    EXPECT_EQ(ticks.count(), stoppedAt);
}

}  // namespace
}  // namespace orvane
