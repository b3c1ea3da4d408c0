#pragma once

#include <QSize>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "recording/FrameQueue.h"

namespace orvane {

class ProgramSnapshotStore;
class RecordingClock;
class VideoEncoder;

// The picture side of a recording, on two threads of its own. The render
// thread composes the latest program snapshot 30 times a second on the
// recording's clock (frame n is due n/30 s after the origin); the encoder
// thread converts and encodes. Neither waits for the main thread.
//
// A frame whose time has passed by more than three frame intervals before it
// could be drawn, or that finds the encoder's queue full, is dropped and
// counted; the file then simply has no frame at that time. Frames keep the
// time they were due at, however late they are drawn.
class VideoPipeline {
public:
    using FailureHandler = std::function<void(const QString&)>;
    static constexpr std::size_t kQueueDepth = 3;

    VideoPipeline(QSize size, std::shared_ptr<ProgramSnapshotStore> snapshots, VideoEncoder& encoder);
    ~VideoPipeline();
    VideoPipeline(const VideoPipeline&) = delete;
    VideoPipeline& operator=(const VideoPipeline&) = delete;

    // Starts the threads; the render thread composes one frame to warm its
    // caches (fonts, images) and then waits for begin().
    void start(const RecordingClock& clock, FailureHandler onFailure);
    // The clock's origin is set: frame 0 is due now.
    void begin();
    // Stops composing, encodes what is queued and drains the encoder.
    QString stop();

    std::int64_t framesComposed() const { return composed_; }
    std::int64_t framesDropped() const { return dropped_; }

private:
    void renderLoop(std::stop_token stop);
    void encodeLoop(std::stop_token stop);
    void reportFailure(const QString& message);

    const QSize size_;
    const std::shared_ptr<ProgramSnapshotStore> snapshots_;
    VideoEncoder& encoder_;  // the encoder thread's alone while it runs
    FrameQueue queue_;
    const RecordingClock* clock_ = nullptr;
    FailureHandler onFailure_;
    std::atomic<bool> failed_{false};
    std::atomic<std::int64_t> composed_{0};
    std::atomic<std::int64_t> dropped_{0};
    std::atomic<std::int64_t> composeTime_ns_{0};  // summed over composed frames
    std::atomic<std::int64_t> encodeTime_ns_{0};   // summed over encoded frames
    std::atomic<std::int64_t> encoded_{0};

    std::mutex waitMutex_;  // protects nothing: the render thread's sleep until the next frame
    std::condition_variable_any wake_;

    std::jthread encodeThread_;
    std::jthread renderThread_;  // last: stopped first
};

}  // namespace orvane
