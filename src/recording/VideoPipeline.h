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

#include "recording/FrameRing.h"
#include "recording/ThreadSchedule.h"

namespace orvane {

class ProgramSnapshotStore;
class RecordingClock;
class VideoEncoder;

// The picture side of a recording, on two threads of its own. The render
// thread composes the latest program snapshot 30 times a second on the
// recording's clock (frame n is due n/30 s after the origin) into one canvas
// it keeps, and converts it straight into a picture of the ring it hands to
// the encoder thread; the encoder thread encodes and writes. Neither waits
// for the other, nor for the main thread.
//
// A frame is dropped and counted when its time has passed by more than the
// catch-up allowance before it could be drawn (the render thread is late),
// or when the ring has no free picture (the encoder is behind); the file
// then simply has no frame at that time. Frames keep the time they were due
// at, however late they are drawn. A frame whose picture cannot have
// changed is not drawn again: the last picture is queued once more.
class VideoPipeline {
public:
    using FailureHandler = std::function<void(const QString&)>;
    // Pictures between the render and the encoder thread: about a quarter of
    // a second of slack for the encoder.
    static constexpr std::size_t kRingSlots = 8;
    // How far behind its clock the render thread may fall and still draw
    // every frame, in frames.
    static constexpr int kCatchUpFrames = 6;

    struct Figures {
        std::int64_t composed = 0;  // drawn anew
        std::int64_t repeated = 0;  // unchanged, the last picture again
        std::int64_t late = 0;      // dropped: the render thread was behind its clock
        std::int64_t encoderBehind = 0;  // dropped: no free picture in the ring
        std::int64_t dropped() const { return late + encoderBehind; }
    };

    VideoPipeline(QSize size, std::shared_ptr<ProgramSnapshotStore> snapshots, VideoEncoder& encoder);
    ~VideoPipeline();
    VideoPipeline(const VideoPipeline&) = delete;
    VideoPipeline& operator=(const VideoPipeline&) = delete;

    // Allocates the ring and starts the threads; the render thread composes
    // one frame to warm its caches (fonts, images) and then waits for
    // begin(). Empty on success.
    QString start(const RecordingClock& clock, FailureHandler onFailure);
    // The clock's origin is set: frame 0 is due now.
    void begin();
    // Stops composing, encodes what is queued and drains the encoder.
    QString stop();

    Figures figures() const;

private:
    void renderLoop(std::stop_token stop);
    void encodeLoop();
    void reportFailure(const QString& message);

    const QSize size_;
    const std::shared_ptr<ProgramSnapshotStore> snapshots_;
    VideoEncoder& encoder_;  // the encoder thread's alone while it runs
    FrameRing ring_{kRingSlots};
    const RecordingClock* clock_ = nullptr;
    FailureHandler onFailure_;
    std::atomic<bool> failed_{false};
    std::atomic<std::int64_t> composed_{0};
    std::atomic<std::int64_t> repeated_{0};
    std::atomic<std::int64_t> late_{0};
    std::atomic<std::int64_t> encoderBehind_{0};
    std::atomic<std::int64_t> composeTime_ns_{0};  // summed over composed frames, with the conversion
    std::atomic<std::int64_t> encodeTime_ns_{0};   // summed over encoded frames
    std::atomic<std::int64_t> encoded_{0};

    // Each thread's time on a CPU and waiting for one, over the recording;
    // written by the thread as it ends, read after it is joined.
    ThreadSchedule renderSchedule_;
    ThreadSchedule encodeSchedule_;

    std::mutex waitMutex_;  // protects nothing: the render thread's sleep until the next frame
    std::condition_variable_any wake_;

    std::jthread encodeThread_;
    std::jthread renderThread_;  // last: stopped first
};

}  // namespace orvane
