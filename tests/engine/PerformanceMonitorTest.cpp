// The read-outs: on and off, the frame window on a fake clock, memory
// against the kernel's figure.

#include <QSignalSpy>

#include <gtest/gtest.h>

#include "engine/PerformanceMonitor.h"
#include "engine/StreamManager.h"
#include "support/ProcStatus.h"
#include "support/TestHome.h"

namespace orvane {
namespace performance_monitor_test {

class FakeClock {
public:
    PerformanceMonitor::Clock clock() {
        return [this] { return seconds; };
    }
    double seconds = 1000.0;
};

TEST(PerformanceMonitor, StartsOffWithZeros) {
    PerformanceMonitor monitor;
    EXPECT_FALSE(monitor.isActive());
    EXPECT_FALSE(monitor.isSampling());
    EXPECT_EQ(monitor.cpuUsage(), 0);
    EXPECT_EQ(monitor.memoryUsage(), 0);
    EXPECT_EQ(monitor.fps(), 0);
}

TEST(PerformanceMonitor, StartSamplesAtOnceWithMeasuredFigures) {
    PerformanceMonitor monitor;
    QSignalSpy stats(&monitor, &PerformanceMonitor::statsChanged);
    QSignalSpy active(&monitor, &PerformanceMonitor::isActiveChanged);
    monitor.start();
    EXPECT_TRUE(monitor.isActive());
    EXPECT_TRUE(monitor.isSampling());
    EXPECT_EQ(active.count(), 1);
    EXPECT_GE(stats.count(), 1);
    const auto kernel = test::residentMegabytesFromStatus();
    ASSERT_TRUE(kernel);
    EXPECT_NEAR(monitor.memoryUsage(), *kernel, 1.0);
    EXPECT_GE(monitor.cpuUsage(), 0.0);  // the process's average so far
    EXPECT_EQ(monitor.fps(), 0);         // nothing composed any frame
}

TEST(PerformanceMonitor, MemoryFollowsTheKernelAfterAllocating) {
    PerformanceMonitor monitor;
    monitor.start();
    const double before = monitor.memoryUsage();
    std::vector<char> block(64 * 1024 * 1024, 1);  // touched, so resident
    monitor.updateStats();
    const auto kernel = test::residentMegabytesFromStatus();
    ASSERT_TRUE(kernel);
    EXPECT_NEAR(monitor.memoryUsage(), *kernel, 1.0);
    EXPECT_GT(monitor.memoryUsage(), before + 60);
    EXPECT_EQ(block[12345], 1);
}

TEST(PerformanceMonitor, StopZeroesEverythingAndLeavesNoTimer) {
    FakeClock fake;
    PerformanceMonitor monitor(fake.clock());
    monitor.start();
    monitor.frameComposed(&monitor);
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 1);
    QSignalSpy stats(&monitor, &PerformanceMonitor::statsChanged);
    monitor.stop();
    EXPECT_FALSE(monitor.isActive());
    EXPECT_FALSE(monitor.isSampling());
    EXPECT_EQ(monitor.cpuUsage(), 0);
    EXPECT_EQ(monitor.memoryUsage(), 0);
    EXPECT_EQ(monitor.fps(), 0);
    EXPECT_EQ(stats.count(), 1);
    // The frames counted before the stop are gone too.
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 0);
}

TEST(PerformanceMonitor, FpsCountsTheFramesOfTheLastSecond) {
    FakeClock fake;
    PerformanceMonitor monitor(fake.clock());
    monitor.start();
    for (int i = 0; i < 30; ++i) {
        monitor.frameComposed(&monitor);
        fake.seconds += 1.0 / 60;
    }
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 30);

    fake.seconds += 0.75;  // the first frames leave the window
    monitor.updateStats();
    EXPECT_LT(monitor.fps(), 30);
    EXPECT_GT(monitor.fps(), 0);

    fake.seconds += 1.0;
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 0);
}

TEST(PerformanceMonitor, TwoSurfacesShowingTheProgramCountAsTheBusierOne) {
    FakeClock fake;
    PerformanceMonitor monitor(fake.clock());
    monitor.start();
    const int stage = 0;
    const int popOut = 0;
    // The program stage at 15 frames a second, the pop-out window at 30,
    // both during the same second.
    for (int i = 0; i < 30; ++i) {
        monitor.frameComposed(&popOut);
        if (i % 2 == 0) monitor.frameComposed(&stage);
        fake.seconds += 1.0 / 31;
    }
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 30);
    // The pop-out window closes: the stage's rate remains.
    for (int i = 0; i < 15; ++i) {
        fake.seconds += 1.0 / 15;
        monitor.frameComposed(&stage);
    }
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 15);
}

TEST(PerformanceMonitor, AFrameExactlyOneSecondOldHasLeftTheWindow) {
    FakeClock fake;
    PerformanceMonitor monitor(fake.clock());
    monitor.frameComposed(&monitor);
    fake.seconds += 0.999;
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 1);
    fake.seconds += 0.001;
    monitor.updateStats();
    EXPECT_EQ(monitor.fps(), 0);
}

TEST(PerformanceMonitor, TheTimerSamplesOnceASecond) {
    PerformanceMonitor monitor;
    monitor.start();
    QSignalSpy stats(&monitor, &PerformanceMonitor::statsChanged);
    ASSERT_TRUE(stats.wait(3000));
    EXPECT_TRUE(monitor.isActive());
    EXPECT_GT(monitor.memoryUsage(), 0);
}

TEST(PerformanceMonitor, ASecondStartRestartsTheTimer) {
    PerformanceMonitor monitor;
    monitor.start();
    monitor.start();
    EXPECT_TRUE(monitor.isActive());
    EXPECT_TRUE(monitor.isSampling());
}

TEST(PerformanceMonitor, TheSessionOwnsOneMonitorThatIsOffAtStart) {
    test::TestHome home;
    auto session = home.startSession();
    PerformanceMonitor* monitor = session->performanceMonitor();
    ASSERT_NE(monitor, nullptr);
    EXPECT_EQ(monitor->parent(), session.get());
    EXPECT_FALSE(monitor->isSampling());
    EXPECT_EQ(session->performanceMonitor(), monitor);
}

}  // namespace
}  // namespace orvane
