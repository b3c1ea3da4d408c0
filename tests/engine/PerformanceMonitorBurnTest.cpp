// The CPU read-out against a known load: one thread of this process spins
// through whole one-second windows between timer samples. Runs alone
// (serially in CTest), since other tests would steal the core.

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <pthread.h>
#include <time.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

#include "engine/PerformanceMonitor.h"
#include "support/ProcStatus.h"

namespace orvane {
namespace performance_monitor_burn_test {

double clockSeconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

TEST(PerformanceMonitorBurn, OneBusyCoreReadsAboutOneHundredPercent) {
    PerformanceMonitor monitor;
    std::atomic<bool> spinning{false};
    std::atomic<bool> burning{true};

    // The thread spins from before the start sample until after the last
    // timer sample, so every read-out after the first covers a busy second.
    std::thread burner([&] {
        spinning = true;
        while (burning.load(std::memory_order_relaxed)) {
        }
    });
    while (!spinning) std::this_thread::yield();
    clockid_t burnerClock{};
    ASSERT_EQ(pthread_getcpuclockid(burner.native_handle(), &burnerClock), 0);

    // Every second's read-out must agree with the process CPU clock. The
    // second in which the scheduler gave the burner most of a core is
    // judged against what the burner got, so a loaded machine, which gives
    // it less, reads less and still passes; a read-out that ignores the
    // burner, or counts it twice, does not.
    QSignalSpy stats(&monitor, &PerformanceMonitor::statsChanged);
    monitor.start();
    ASSERT_TRUE(stats.wait(3000));  // the event loop runs; the timer fires after a second
    double judged = 0;
    double judgedShare = 0;
    for (int second = 0; second < 3; ++second) {
        const double processBefore = clockSeconds(CLOCK_PROCESS_CPUTIME_ID);
        const double burnerBefore = clockSeconds(burnerClock);
        const double wallBefore = clockSeconds(CLOCK_MONOTONIC);
        ASSERT_TRUE(stats.wait(3000));
        const double wall = clockSeconds(CLOCK_MONOTONIC) - wallBefore;
        const double processPercent = (clockSeconds(CLOCK_PROCESS_CPUTIME_ID) - processBefore) / wall * 100.0;
        const double burnerShare = (clockSeconds(burnerClock) - burnerBefore) / wall;
        std::printf("measured CPU %.1f %% (own clock %.1f %%, burner got %.0f %% of a core), memory %.1f MB\n",
                    monitor.cpuUsage(), processPercent, burnerShare * 100, monitor.memoryUsage());
        EXPECT_NEAR(monitor.cpuUsage(), processPercent, 15.0);
        if (burnerShare > judgedShare) {
            judgedShare = burnerShare;
            judged = monitor.cpuUsage();
        }
    }
    burning = false;
    burner.join();

    ASSERT_GT(judgedShare, 0.2) << "the burning thread hardly ran in three seconds";
    // One busy core reads about a hundred percent; a share of it that share.
    EXPECT_GE(judged, judgedShare * 100.0 - 20.0);
    EXPECT_LE(judged, judgedShare * 100.0 + 30.0);
    const auto kernel = test::residentMegabytesFromStatus();
    ASSERT_TRUE(kernel);
    EXPECT_NEAR(monitor.memoryUsage(), *kernel, 1.0);
}

TEST(PerformanceMonitorBurn, AnIdleSecondReadsNearZero) {
    PerformanceMonitor monitor;
    monitor.start();
    QSignalSpy stats(&monitor, &PerformanceMonitor::statsChanged);
    ASSERT_TRUE(stats.wait(3000));
    std::printf("measured idle CPU %.1f %%\n", monitor.cpuUsage());
    EXPECT_LT(monitor.cpuUsage(), 20.0);
}

}  // namespace
}  // namespace orvane
