#include "teleprompter/ScrollTicker.h"

#include <algorithm>

namespace orvane {

ScrollTicker::ScrollTicker(QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &ScrollTicker::fire);
}

void ScrollTicker::start() {
    running_ = true;
    fired_ = 0;
    clock_.start();
    armNext();
}

void ScrollTicker::stop() {
    running_ = false;
    timer_.stop();
}

void ScrollTicker::fire() {
    if (!running_) return;
    ++fired_;
    emit tick();
    if (running_) armNext();
}

qint64 ScrollTicker::waitBeforeNextTick(qint64 fired, qint64 elapsedNs) {
    // Deadline of the next tick in nanoseconds since the start.
    const qint64 due = (fired + 1) * 1'000'000'000 / ticksPerSecond;
    return std::max<qint64>(0, (due - elapsedNs) / 1'000'000);
}

void ScrollTicker::armNext() {
    timer_.start(static_cast<int>(waitBeforeNextTick(fired_, clock_.nsecsElapsed())));
}

}  // namespace orvane
