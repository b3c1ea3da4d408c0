#include "recording/VideoPipeline.h"

#include <QPainter>

#include "document/Log.h"
#include "recording/ProgramFramePainter.h"
#include "recording/ProgramSnapshotStore.h"
#include "recording/RecordingClock.h"
#include "recording/VideoEncoder.h"

namespace orvane {

namespace {
constexpr auto kFrameInterval = std::chrono::duration_cast<RecordingClock::Clock::duration>(
    std::chrono::duration<double>(1.0 / VideoEncoder::kFramesPerSecond));
// How far behind the render thread may fall and still draw every frame.
constexpr auto kCatchUp = 3 * kFrameInterval;
}

VideoPipeline::VideoPipeline(QSize size, std::shared_ptr<ProgramSnapshotStore> snapshots, VideoEncoder& encoder)
    : size_(size), snapshots_(std::move(snapshots)), encoder_(encoder), queue_(kQueueDepth, size) {}

VideoPipeline::~VideoPipeline() { stop(); }

void VideoPipeline::start(const RecordingClock& clock, FailureHandler onFailure) {
    clock_ = &clock;
    onFailure_ = std::move(onFailure);
    encodeThread_ = std::jthread([this](std::stop_token stop) { encodeLoop(stop); });
    renderThread_ = std::jthread([this](std::stop_token stop) { renderLoop(stop); });
}

void VideoPipeline::begin() {
    {
        std::lock_guard lock(waitMutex_);  // so that the render thread cannot miss the wake-up
    }
    wake_.notify_all();
}

QString VideoPipeline::stop() {
    if (renderThread_.joinable()) {
        renderThread_.request_stop();
        wake_.notify_all();
        renderThread_.join();
    }
    queue_.close();
    if (encodeThread_.joinable()) {
        encodeThread_.join();  // encodes what is queued, then ends
        const auto average_ms = [](std::int64_t total_ns, std::int64_t count) {
            return count > 0 ? std::to_string(static_cast<double>(total_ns) / 1e6 / static_cast<double>(count)) : "-";
        };
        logLine("🎞️ Recording video: " + std::to_string(encoded_.load()) + " frames, " +
                std::to_string(dropped_.load()) + " dropped; composing " + average_ms(composeTime_ns_, composed_) +
                " ms, converting and encoding " + average_ms(encodeTime_ns_, encoded_) + " ms a frame");
    }
    if (failed_) return {};
    return encoder_.flush();
}

void VideoPipeline::renderLoop(std::stop_token stop) {
    using Clock = RecordingClock::Clock;
    ProgramFramePainter painter;
    {
        // A first frame costs what later ones do not; it is drawn before the
        // clock runs.
        QImage warmUp = queue_.takeBuffer();
        if (std::shared_ptr<const ProgramSnapshot> snapshot = snapshots_->latest()) {
            QPainter p(&warmUp);
            painter.paint(p, size_, *snapshot, std::chrono::duration<double>(Clock::now().time_since_epoch()).count());
        }
        queue_.recycle(std::move(warmUp));
        std::unique_lock lock(waitMutex_);
        wake_.wait(lock, stop, [this] { return clock_->hasOrigin(); });
    }
    std::int64_t frameIndex = 0;
    while (!stop.stop_requested()) {
        const Clock::time_point due = clock_->origin() + frameIndex * kFrameInterval;
        {
            std::unique_lock lock(waitMutex_);
            wake_.wait_until(lock, stop, due, [] { return false; });
        }
        if (stop.stop_requested()) break;
        // A frame drawn a little late keeps its time; one that is more than
        // the catch-up allowance behind goes, with all others behind.
        const Clock::duration late = Clock::now() - due;
        if (late > kCatchUp) {
            const std::int64_t missed = late / kFrameInterval;
            dropped_ += missed;
            frameIndex += missed;
            continue;
        }
        const Clock::time_point composeStart = Clock::now();
        std::shared_ptr<const ProgramSnapshot> snapshot = snapshots_->latest();
        QImage image = queue_.takeBuffer();
        if (snapshot) {
            QPainter p(&image);
            painter.paint(p, size_, *snapshot, std::chrono::duration<double>(due.time_since_epoch()).count());
        } else {
            image.fill(Qt::black);
        }
        ++composed_;
        composeTime_ns_ += std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - composeStart).count();
        if (!queue_.push(std::move(image), frameIndex)) ++dropped_;
        ++frameIndex;
    }
}

void VideoPipeline::encodeLoop(std::stop_token stop) {
    while (std::optional<FrameQueue::Item> item = queue_.pop(stop)) {
        if (!failed_) {
            const auto encodeStart = RecordingClock::Clock::now();
            const QString failure = encoder_.encode(item->image.constBits(),
                                                    static_cast<int>(item->image.bytesPerLine()), item->frameIndex);
            if (!failure.isEmpty()) reportFailure(failure);
            encodeTime_ns_ += std::chrono::duration_cast<std::chrono::nanoseconds>(RecordingClock::Clock::now() -
                                                                                   encodeStart)
                                  .count();
            ++encoded_;
        }
        queue_.recycle(std::move(item->image));
    }
}

void VideoPipeline::reportFailure(const QString& message) {
    if (failed_.exchange(true)) return;
    logLine("❌ Recording video failed: " + message.toStdString());
    if (onFailure_) onFailure_(message);
}

}  // namespace orvane
