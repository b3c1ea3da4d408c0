#include "recording/VideoPipeline.h"

#include <QImage>
#include <QPainter>

#include <cstdio>

#include "document/Log.h"
#include "recording/LiveFrameTable.h"
#include "recording/ProgramChangeWatch.h"
#include "recording/ProgramFramePainter.h"
#include "recording/ProgramSnapshotStore.h"
#include "recording/RecordingClock.h"
#include "recording/VideoEncoder.h"

namespace orvane {

namespace {
using Clock = RecordingClock::Clock;
constexpr auto kFrameInterval =
    std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1.0 / VideoEncoder::kFramesPerSecond));

double secondsOf(Clock::time_point t) { return std::chrono::duration<double>(t.time_since_epoch()).count(); }

std::int64_t nanoseconds(Clock::duration d) { return std::chrono::duration_cast<std::chrono::nanoseconds>(d).count(); }

// What a frame would be drawn from, for deciding whether to draw it.
ProgramChangeWatch::State stateOf(std::shared_ptr<const ProgramSnapshot> snapshot, const ProgramFramePainter& painter,
                                  double now) {
    ProgramChangeWatch::State state;
    if (!snapshot) {
        state.frameGeneration = 0;  // black, whatever the sources do
        return state;
    }
    // Without a program scene the card shows no source.
    if (!snapshot->frames || !snapshot->programScene) state.frameGeneration = 0;
    else if (const auto* table = dynamic_cast<const LiveFrameTable*>(snapshot->frames.get()))
        state.frameGeneration = table->generation();
    state.animating = painter.isAnimating(now);
    state.snapshot = std::move(snapshot);
    return state;
}
}  // namespace

VideoPipeline::VideoPipeline(QSize size, std::shared_ptr<ProgramSnapshotStore> snapshots, VideoEncoder& encoder)
    : size_(size), snapshots_(std::move(snapshots)), encoder_(encoder) {}

VideoPipeline::~VideoPipeline() { stop(); }

QString VideoPipeline::start(const RecordingClock& clock, FailureHandler onFailure) {
    if (QString failure = ring_.allocate(size_.width(), size_.height(), VideoEncoder::kPixelFormat); !failure.isEmpty())
        return failure;
    clock_ = &clock;
    onFailure_ = std::move(onFailure);
    encodeThread_ = std::jthread([this] { encodeLoop(); });
    renderThread_ = std::jthread([this](std::stop_token stop) { renderLoop(stop); });
    return {};
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
    ring_.close();
    if (encodeThread_.joinable()) {
        encodeThread_.join();  // encodes what is queued, then ends
        const auto average_ms = [](std::int64_t total_ns, std::int64_t count) {
            return count > 0 ? std::to_string(static_cast<double>(total_ns) / 1e6 / static_cast<double>(count)) : "-";
        };
        const auto seconds = [](double s) {
            char text[32];
            std::snprintf(text, sizeof text, "%.2f s", s);
            return std::string(text);
        };
        const Figures f = figures();
        logLine("🎞️ Recording video: " + std::to_string(encoded_.load()) + " frames (" + std::to_string(f.repeated) +
                " unchanged), " + std::to_string(f.dropped()) + " dropped (" + std::to_string(f.late) +
                " drawn too late, " + std::to_string(f.encoderBehind) + " with the encoder behind); composing " +
                average_ms(composeTime_ns_, f.composed) + " ms, encoding " + average_ms(encodeTime_ns_, encoded_) +
                " ms a frame; render thread ran " + seconds(renderSchedule_.ran_s) + " and waited " +
                seconds(renderSchedule_.waited_s) + " for a CPU, encoder thread ran " + seconds(encodeSchedule_.ran_s) +
                " and waited " + seconds(encodeSchedule_.waited_s));
    }
    if (failed_) return {};
    return encoder_.flush();
}

VideoPipeline::Figures VideoPipeline::figures() const {
    return {composed_.load(), repeated_.load(), late_.load(), encoderBehind_.load()};
}

void VideoPipeline::renderLoop(std::stop_token stop) {
    ProgramFramePainter painter;
    // The one canvas every frame is composed in; RGB32 is B, G, R, 255 in
    // memory, what the conversion reads.
    QImage canvas(size_, QImage::Format_RGB32);
    const auto compose = [&](const ProgramSnapshot* snapshot, double now) {
        if (!snapshot) {
            canvas.fill(Qt::black);
            return;
        }
        QPainter p(&canvas);
        painter.paint(p, size_, *snapshot, now);
    };
    // A first frame costs what later ones do not; it is drawn before the
    // clock runs.
    compose(snapshots_->latest().get(), secondsOf(Clock::now()));
    {
        std::unique_lock lock(waitMutex_);
        wake_.wait(lock, stop, [this] { return clock_->hasOrigin(); });
    }
    ProgramChangeWatch changes;
    const ThreadSchedule scheduleAtOrigin = ThreadSchedule::ofThisThread();
    std::int64_t frameIndex = 0;
    while (!stop.stop_requested()) {
        // Absolute deadlines: a late frame does not push back the ones after.
        const Clock::time_point due = clock_->origin() + frameIndex * kFrameInterval;
        {
            std::unique_lock lock(waitMutex_);
            wake_.wait_until(lock, stop, due, [] { return false; });
        }
        if (stop.stop_requested()) break;
        // A frame drawn a little late keeps its time; one that is more than
        // the catch-up allowance behind goes, with all others behind.
        const Clock::duration late = Clock::now() - due;
        if (late > kCatchUpFrames * kFrameInterval) {
            const std::int64_t missed = late / kFrameInterval;
            late_ += missed;
            frameIndex += missed;
            continue;
        }
        const double now = secondsOf(due);
        ProgramChangeWatch::State state = stateOf(snapshots_->latest(), painter, now);
        if (!changes.needsDrawing(state, frameIndex)) {
            if (ring_.repeatLatest(frameIndex)) ++repeated_;
            else ++encoderBehind_;
            ++frameIndex;
            continue;
        }
        // No free picture: the encoder is behind, and drawing would only
        // take time from it.
        const int slot = ring_.acquire();
        if (slot < 0) {
            ++encoderBehind_;
            ++frameIndex;
            continue;
        }
        const Clock::time_point composeStart = Clock::now();
        compose(state.snapshot.get(), now);
        AVFrame* picture = ring_.picture(slot);
        // The encoder has let go of every picture it was given; should it
        // ever keep one, this gives the slot fresh memory instead of writing
        // under it.
        if (const int writable = av_frame_make_writable(picture); writable < 0) {
            ring_.release(slot);
            reportFailure(avErrorText(writable));
            break;
        }
        if (!VideoEncoder::convert(canvas.constBits(), static_cast<int>(canvas.bytesPerLine()), *picture)) {
            ring_.release(slot);
            reportFailure(QStringLiteral("Colour conversion failed"));
            break;
        }
        ring_.push(slot, frameIndex);
        changes.drawn(state, frameIndex);
        ++composed_;
        composeTime_ns_ += nanoseconds(Clock::now() - composeStart);
        ++frameIndex;
    }
    renderSchedule_ = ThreadSchedule::ofThisThread().since(scheduleAtOrigin);
}

void VideoPipeline::encodeLoop() {
    const ThreadSchedule atStart = ThreadSchedule::ofThisThread();
    while (std::optional<FrameRing::Item> item = ring_.pop({})) {
        if (!failed_) {
            const auto encodeStart = Clock::now();
            const QString failure = encoder_.encode(*ring_.picture(item->slot), item->frameIndex);
            if (!failure.isEmpty()) reportFailure(failure);
            encodeTime_ns_ += nanoseconds(Clock::now() - encodeStart);
            ++encoded_;
        }
        ring_.release(item->slot);
    }
    encodeSchedule_ = ThreadSchedule::ofThisThread().since(atStart);
}

void VideoPipeline::reportFailure(const QString& message) {
    if (failed_.exchange(true)) return;
    logLine("❌ Recording video failed: " + message.toStdString());
    if (onFailure_) onFailure_(message);
}

}  // namespace orvane
