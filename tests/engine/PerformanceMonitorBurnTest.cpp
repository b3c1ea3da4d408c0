// The CPU read-out against a known load: one thread of this process spins
// through a whole one-second window between two timer samples. Runs alone
// (serially in CTest), since other tests would steal the core.

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <time.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

#include "engine/PerformanceMonitor.h"
#include "support/ProcStatus.h"

namespace orvane {
namespace {

double clockSeconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

TEST(PerformanceMonitorBurn, OneBusyCoreReadsAboutOneHundredPercent) {
    PerformanceMonitor monitor;
    std::atomic<bool> spinning{false};
    std::atomic<bool> burning{true};
    double burnerCpu = 0;
    double burnerWall = 0;

    // The thread spins from before the start sample until after the second
    // timer sample, so the second read-out covers one whole busy second.
    std::thread burner([&] {
        const double cpu0 = clockSeconds(CLOCK_THREAD_CPUTIME_ID);
        const double wall0 = clockSeconds(CLOCK_MONOTONIC);
        spinning = true;
        while (burning.load(std::memory_order_relaxed)) {
        }
        burnerCpu = clockSeconds(CLOCK_THREAD_CPUTIME_ID) - cpu0;
        burnerWall = clockSeconds(CLOCK_MONOTONIC) - wall0;
    });
    while (!spinning) std::this_thread::yield();

    QSignalSpy stats(&monitor, &PerformanceMonitor::statsChanged);
    monitor.start();
    const bool firstSample = stats.wait(3000);  // the event loop runs; the timer fires after a second
    const double processCpuBefore = clockSeconds(CLOCK_PROCESS_CPUTIME_ID);
    const double wallBefore = clockSeconds(CLOCK_MONOTONIC);
    const bool secondSample = firstSample && stats.wait(3000);
    const double processPercent = (clockSeconds(CLOCK_PROCESS_CPUTIME_ID) - processCpuBefore) /
                                  (clockSeconds(CLOCK_MONOTONIC) - wallBefore) * 100.0;
    burning = false;
    burner.join();

    ASSERT_TRUE(firstSample);
    ASSERT_TRUE(secondSample);
    std::printf("measured CPU %.1f %% (own clock %.1f %%, burner got %.0f %% of a core), memory %.1f MB\n",
                monitor.cpuUsage(), processPercent, burnerCpu / burnerWall * 100, monitor.memoryUsage());

    // One busy core is about a hundred percent. Other load on the machine
    // outside this test run takes the core away and fails this check.
    EXPECT_GE(monitor.cpuUsage(), 70.0);
    EXPECT_LE(monitor.cpuUsage(), 130.0);
    // The read-out agrees with the process CPU clock over the same second.
    EXPECT_NEAR(monitor.cpuUsage(), processPercent, 15.0);
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
