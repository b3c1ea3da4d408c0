#pragma once

#include <QObject>
#include <QTimer>

#include <deque>
#include <map>
#include <functional>
#include <optional>

namespace orvane {

// The three read-outs of the bottom bar, measured: CPU time of this process
// in percent of one core over the last sample window (one second while the
// timer runs), resident memory in MB, and the frames the program output
// composed in the last second: the rate of the busiest surface showing the
// program, so that a frame shown on two surfaces counts once. Samples only while on; off means zeros and no
// timer.
class PerformanceMonitor : public QObject {
    Q_OBJECT
    Q_PROPERTY(double cpuUsage READ cpuUsage NOTIFY statsChanged)
    Q_PROPERTY(double memoryUsage READ memoryUsage NOTIFY statsChanged)
    Q_PROPERTY(int fps READ fps NOTIFY statsChanged)
    Q_PROPERTY(bool isActive READ isActive NOTIFY isActiveChanged)

public:
    // Monotonic seconds; the frame window and the CPU window are read on it.
    using Clock = std::function<double()>;

    static constexpr int sampleIntervalMs = 1000;

    explicit PerformanceMonitor(QObject* parent = nullptr);
    PerformanceMonitor(Clock clock, QObject* parent = nullptr);
    ~PerformanceMonitor() override;

    double cpuUsage() const { return cpuUsage_; }
    double memoryUsage() const { return memoryUsage_; }
    int fps() const { return fps_; }
    bool isActive() const { return isActive_; }
    bool isSampling() const { return timer_.isActive(); }

public slots:
    // Restarts: samples at once, then once a second.
    void start();
    // Stops the timer and zeroes every figure.
    void stop();
    // One sample, whether on or off.
    void updateStats();
    // Called by each surface that shows the program (the program stage, the
    // pop-out window) once per composed frame, on this object's thread (or
    // through a queued connection). `surface` only tells surfaces apart.
    void frameComposed(const void* surface);

signals:
    void statsChanged();
    void isActiveChanged(bool active);

private:
    std::optional<double> cpuPercent(double now);
    double memoryMegabytes();
    void dropFramesBefore(double oldest);
    void setActive(bool active);

    Clock clock_;
    QTimer timer_;
    double cpuUsage_ = 0;
    double memoryUsage_ = 0;
    int fps_ = 0;
    bool isActive_ = false;
    // Clock times of each surface's recent frames, oldest first.
    std::map<const void*, std::deque<double>> frameTimes_;
    // The CPU window starts at the previous sample; with none, at the start
    // of the process.
    struct CpuMark {
        double cpuSeconds;
        double clockSeconds;
    };
    std::optional<CpuMark> lastCpuMark_;
    bool reportedReadFailure_ = false;
};

}  // namespace orvane
