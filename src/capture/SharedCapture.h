#pragma once

#include <QObject>
#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "capture/CaptureResult.h"
#include "capture/CapturedFrame.h"
#include "capture/CaptureStream.h"
#include "capture/LatestFrame.h"

namespace orvane {

// One running capture of one target, on a thread of its own, however many
// views show it. The thread keeps only the latest frame; the main thread is
// told that a new one is there at most once per turn of its event loop, so
// it never works through a queue of old pictures.
class SharedCapture : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool pointerInside READ pointerInside NOTIFY pointerInsideChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY failed)

public:
    using Opener = std::function<CaptureResult<std::unique_ptr<CaptureStream>>()>;

    // A source whose every grab has failed for this long is gone (a window
    // closed, a camera unplugged, a stream at its end): the capture ends
    // with failed(), so that views show the failure instead of a frozen
    // picture, and their owners can try again.
    static constexpr std::chrono::milliseconds kGiveUpAfter{2000};

    // Opens the source on the new thread, then grabs framesPerSecond times a
    // second, or as fast as the source delivers when it paces itself.
    SharedCapture(QString key, int framesPerSecond, Opener opener, QObject* parent = nullptr);
    ~SharedCapture() override;

    const QString& key() const { return key_; }
    CapturedFrame latestFrame() const { return latest_->read(); }
    // Where this capture's frames land, for a reader on another thread that
    // must not wait for the main thread (the recorder). It may outlive the
    // capture, keeping its last frame.
    std::shared_ptr<const LatestFrame> frames() const { return latest_; }
    bool pointerInside() const { return pointerInside_; }
    QString errorMessage() const { return errorMessage_; }
    // How often the cursor setting flipped since start.
    int cursorUpdateCount() const { return cursorUpdateCount_; }

signals:
    void frameAvailable();
    void pointerInsideChanged(bool inside);
    void failed(const QString& message);

private:
    // The opener's stream, or a failure: also when there is no opener, when
    // it throws, or when it claims success without handing over a stream.
    CaptureResult<std::unique_ptr<CaptureStream>> openSource();
    // One frame, or a failure also when the source throws.
    static CaptureResult<GrabbedFrame> grabFrom(CaptureStream& source);
    void run(std::stop_token stop);
    // Ends the capture: errorMessage and failed() on the main thread.
    void reportFailure(const QString& message);
    void publish(GrabbedFrame&& frame, std::chrono::steady_clock::time_point askedAt,
                 std::chrono::steady_clock::time_point grabbedAt);
    void deliverFrameNotice();
    void deliverPointer(bool inside);

    const QString key_;
    const int framesPerSecond_;
    Opener opener_;

    const std::shared_ptr<LatestFrame> latest_ = std::make_shared<LatestFrame>();
    std::atomic<bool> noticePending_{false};

    std::mutex wakeMutex_;                  // protects nothing but the wait below
    std::condition_variable_any wake_;
    std::mutex sourceMutex_;
    CaptureStream* liveSource_ = nullptr;  // protected by sourceMutex_; for interrupt() on stop

    // Main thread only.
    bool pointerInside_ = false;
    int cursorUpdateCount_ = 0;
    QString errorMessage_;

    std::jthread thread_;  // last: started after every field above exists
};

// Keeps a capture alive until the event loop turns again. Whoever lets go
// of a capture from inside one of its own signals calls this first, so the
// capture is not destroyed while it is still emitting. Nothing for null.
void keepUntilNoticeIsOver(const std::shared_ptr<SharedCapture>& capture, QObject* context);

}  // namespace orvane
