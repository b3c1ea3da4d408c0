#include "engine/PerformanceMonitor.h"

#include <algorithm>
#include <chrono>
#include <iterator>

#include "document/Log.h"
#include "engine/ProcessUsage.h"

namespace orvane {

namespace {

constexpr double frameWindowSeconds = 1.0;
// Shorter windows than this hold too few clock ticks of CPU time to mean
// anything; the previous figure stands.
constexpr double shortestCpuWindowSeconds = 0.1;

double steadySeconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

PerformanceMonitor::PerformanceMonitor(QObject* parent) : PerformanceMonitor(steadySeconds, parent) {}

PerformanceMonitor::PerformanceMonitor(Clock clock, QObject* parent)
    : QObject(parent), clock_(std::move(clock)) {
    timer_.setInterval(sampleIntervalMs);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &PerformanceMonitor::updateStats);
}

PerformanceMonitor::~PerformanceMonitor() { stop(); }

void PerformanceMonitor::start() {
    stop();
    setActive(true);
    updateStats();
    timer_.start();
}

void PerformanceMonitor::stop() {
    timer_.stop();
    frameTimes_.clear();
    lastCpuMark_.reset();
    setActive(false);
    cpuUsage_ = 0;
    memoryUsage_ = 0;
    fps_ = 0;
    emit statsChanged();
}

void PerformanceMonitor::updateStats() {
    const double now = clock_();
    if (const auto cpu = cpuPercent(now)) cpuUsage_ = *cpu;
    memoryUsage_ = memoryMegabytes();
    dropFramesBefore(now - frameWindowSeconds);
    std::size_t busiest = 0;
    for (const auto& [surface, times] : frameTimes_) busiest = std::max(busiest, times.size());
    fps_ = static_cast<int>(busiest);
    emit statsChanged();
}

void PerformanceMonitor::frameComposed(const void* surface) {
    const double now = clock_();
    frameTimes_[surface].push_back(now);
    dropFramesBefore(now - frameWindowSeconds);
}

std::optional<double> PerformanceMonitor::cpuPercent(double now) {
    const auto cpu = ProcessUsage::cpuSeconds();
    if (!cpu) {
        if (!reportedReadFailure_) logLine("\u26A0\uFE0F Could not read CPU time from /proc/self/stat");
        reportedReadFailure_ = true;
        return 0.0;
    }
    double cpuUsed = 0;
    double elapsed = 0;
    if (lastCpuMark_) {
        cpuUsed = *cpu - lastCpuMark_->cpuSeconds;
        elapsed = now - lastCpuMark_->clockSeconds;
        if (elapsed < shortestCpuWindowSeconds) return std::nullopt;
    } else {
        // First sample: the average over the life of the process.
        const auto age = ProcessUsage::ageSeconds();
        cpuUsed = *cpu;
        elapsed = age.value_or(0);
    }
    lastCpuMark_ = CpuMark{*cpu, now};
    if (elapsed <= 0) return 0.0;
    return cpuUsed / elapsed * 100.0;
}

double PerformanceMonitor::memoryMegabytes() {
    const auto bytes = ProcessUsage::residentBytes();
    if (!bytes) {
        if (!reportedReadFailure_) logLine("\u26A0\uFE0F Could not read memory use from /proc/self/statm");
        reportedReadFailure_ = true;
        return 0;
    }
    return *bytes / 1024.0 / 1024.0;
}

void PerformanceMonitor::dropFramesBefore(double oldest) {
    for (auto it = frameTimes_.begin(); it != frameTimes_.end();) {
        auto& times = it->second;
        while (!times.empty() && times.front() <= oldest) times.pop_front();
        // A surface that stopped drawing (a closed window) is forgotten.
        it = times.empty() ? frameTimes_.erase(it) : std::next(it);
    }
}

void PerformanceMonitor::setActive(bool active) {
    if (isActive_ == active) return;
    isActive_ = active;
    emit isActiveChanged(active);
}

}  // namespace orvane
