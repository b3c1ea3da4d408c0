#include "capture/SharedCapture.h"

#include <QMetaObject>

#include <exception>
#include <optional>
#include <utility>

#include "document/Log.h"

namespace orvane {

SharedCapture::SharedCapture(QString key, int framesPerSecond, Opener opener, QObject* parent)
    : QObject(parent), key_(std::move(key)), framesPerSecond_(framesPerSecond), opener_(std::move(opener)) {
    thread_ = std::jthread([this](std::stop_token stop) { run(stop); });
}

SharedCapture::~SharedCapture() {
    thread_.request_stop();
    {
        std::lock_guard lock(sourceMutex_);
        if (liveSource_) liveSource_->interrupt();
    }
    wake_.notify_all();
    if (thread_.joinable()) thread_.join();
}

CaptureResult<std::unique_ptr<CaptureStream>> SharedCapture::openSource() {
    using Opened = CaptureResult<std::unique_ptr<CaptureStream>>;
    if (!opener_) return Opened::failure(QStringLiteral("Nothing to open the source with"));
    // The opener is outside code on a thread of ours: whatever it does wrong
    // ends this capture with a message, never the program.
    try {
        Opened opened = opener_();
        if (!opened) return Opened::failure(opened.error());
        if (!opened.value()) return Opened::failure(QStringLiteral("The source opened without a stream"));
        return opened;
    } catch (const std::exception& error) {
        return Opened::failure(QStringLiteral("Opening the source failed: ") + QString::fromLocal8Bit(error.what()));
    } catch (...) {
        return Opened::failure(QStringLiteral("Opening the source failed"));
    }
}

CaptureResult<GrabbedFrame> SharedCapture::grabFrom(CaptureStream& source) {
    try {
        return source.grabFrame();
    } catch (const std::exception& error) {
        return CaptureResult<GrabbedFrame>::failure(QString::fromLocal8Bit(error.what()));
    } catch (...) {
        return CaptureResult<GrabbedFrame>::failure(QStringLiteral("The source failed to deliver"));
    }
}

void SharedCapture::run(std::stop_token stop) {
    CaptureResult<std::unique_ptr<CaptureStream>> opened = openSource();
    // Whoever shows the capture logs its failure, once however often it
    // tries again.
    if (!opened) return reportFailure(opened.error());
    std::unique_ptr<CaptureStream> source = opened.takeValue();
    {
        std::lock_guard lock(sourceMutex_);
        liveSource_ = source.get();
    }

    using Clock = std::chrono::steady_clock;
    const bool paced = source->pacesItself() || framesPerSecond_ <= 0;
    const auto interval = paced ? Clock::duration::zero()
                                : std::chrono::duration_cast<Clock::duration>(
                                      std::chrono::duration<double>(1.0 / framesPerSecond_));
    auto deadline = Clock::now();
    bool lastPointerInside = false;
    std::optional<Clock::time_point> failingSince;  // set while every grab fails
    std::optional<QString> gaveUp;                  // why the capture ended, if it did

    while (!stop.stop_requested()) {
        // A frame is dated by when it was asked for, so that its age on the
        // main thread includes the grab itself.
        const auto askedAt = Clock::now();
        CaptureResult<GrabbedFrame> grabbed = grabFrom(*source);
        const auto grabbedAt = Clock::now();
        if (stop.stop_requested()) break;
        if (grabbed) {
            failingSince.reset();
            const bool inside = grabbed.value().pointerInside;
            publish(std::move(grabbed.value()), askedAt, grabbedAt);
            if (inside != lastPointerInside) {
                lastPointerInside = inside;
                QMetaObject::invokeMethod(this, [this, inside] { deliverPointer(inside); }, Qt::QueuedConnection);
            }
        } else if (!failingSince) {
            // A device that hiccups drops frames; say so once per run of
            // failures rather than once per frame.
            failingSince = grabbedAt;
            logLine("⚠️ Capture of " + key_.toStdString() + " dropped a frame: " + grabbed.error().toStdString());
        } else if (grabbedAt - *failingSince >= kGiveUpAfter) {
            gaveUp = grabbed.error();
            break;
        }

        if (paced) {
            if (!grabbed) {
                // A failing device would otherwise spin; wait a moment.
                std::unique_lock lock(wakeMutex_);
                wake_.wait_for(lock, stop, std::chrono::milliseconds(100), [] { return false; });
            }
            continue;
        }
        deadline += interval;
        const auto now = Clock::now();
        if (deadline < now) deadline = now;  // fell behind: no burst to catch up
        std::unique_lock lock(wakeMutex_);
        wake_.wait_until(lock, stop, deadline, [] { return false; });
    }
    {
        std::lock_guard lock(sourceMutex_);
        liveSource_ = nullptr;
    }
    // The stream is closed before anyone hears of the failure, so that
    // whoever then opens the target again does not meet it still open.
    source.reset();
    if (gaveUp) reportFailure(*gaveUp);
}

void SharedCapture::reportFailure(const QString& message) {
    QMetaObject::invokeMethod(this, [this, message] {
        errorMessage_ = message;
        emit failed(message);
    }, Qt::QueuedConnection);
}

void SharedCapture::publish(GrabbedFrame&& frame, std::chrono::steady_clock::time_point askedAt,
                            std::chrono::steady_clock::time_point grabbedAt) {
    latest_->replace(std::move(frame.image), askedAt, grabbedAt);
    if (!noticePending_.exchange(true))
        QMetaObject::invokeMethod(this, [this] { deliverFrameNotice(); }, Qt::QueuedConnection);
}

void SharedCapture::deliverFrameNotice() {
    noticePending_ = false;
    emit frameAvailable();
}

void SharedCapture::deliverPointer(bool inside) {
    if (inside == pointerInside_) return;
    pointerInside_ = inside;
    ++cursorUpdateCount_;
    emit pointerInsideChanged(inside);
}

void keepUntilNoticeIsOver(const std::shared_ptr<SharedCapture>& capture, QObject* context) {
    if (capture) QMetaObject::invokeMethod(context, [capture] {}, Qt::QueuedConnection);
}

}  // namespace orvane
