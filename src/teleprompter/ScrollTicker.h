#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace orvane {

// A 60 Hz tick on the main thread that keeps its rate over time: each tick
// is scheduled for an absolute deadline (start + n/60 s), so a late tick
// does not push the later ones back, and a minute holds 3,600 ticks.
class ScrollTicker : public QObject {
    Q_OBJECT
public:
    static constexpr int ticksPerSecond = 60;

    explicit ScrollTicker(QObject* parent = nullptr);

    void start();
    void stop();
    bool isActive() const { return running_; }

    // Milliseconds to wait before the next tick, once `fired` ticks have
    // fired and `elapsedNs` have passed since the start: zero while behind.
    static qint64 waitBeforeNextTick(qint64 fired, qint64 elapsedNs);

signals:
    void tick();

private:
    void fire();
    void armNext();

    QTimer timer_;
    QElapsedTimer clock_;
    qint64 fired_ = 0;
    bool running_ = false;
};

}  // namespace orvane
