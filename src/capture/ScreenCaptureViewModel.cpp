#include "capture/ScreenCaptureViewModel.h"

#include "capture/CaptureBackend.h"
#include "capture/CaptureError.h"
#include "capture/CaptureHub.h"
#include "capture/CaptureTargetResolver.h"
#include "document/Log.h"

namespace orvane {

ScreenCaptureViewModel::ScreenCaptureViewModel(CaptureBackend& backend, CaptureHub& hub, QObject* parent)
    : QObject(parent), backend_(backend), hub_(hub) {}

ScreenCaptureViewModel::~ScreenCaptureViewModel() { detach(); }

void ScreenCaptureViewModel::startCapture(const Source& source, const CaptureQuality& quality) {
    retry_.reset();
    setCapturing(true);
    setErrorMessage(QString());
    currentSource_ = source;
    currentQuality_ = quality;
    attempt();
}

void ScreenCaptureViewModel::attempt() {
    detach();
    if (!currentSource_ || !currentQuality_) return;
    const Source& source = *currentSource_;
    std::vector<CaptureDisplay> displays;
    std::vector<ShareableWindow> windows;
    if (source.type == SourceType::screen) {
        auto listed = backend_.displays();
        if (!listed) return fail(listed.error());
        displays = listed.takeValue();
    } else if (source.type == SourceType::window) {
        auto listed = backend_.windows();
        if (!listed) return fail(listed.error());
        windows = listed.takeValue();
    }

    auto resolved = CaptureTargetResolver::resolve(source, *currentQuality_, displays, windows);
    if (!resolved) return fail(resolved.error());
    const CaptureTarget target = resolved.value();
    windowFrame_ = target.cursorRegion;

    CaptureBackend* backend = &backend_;
    const bool retrying = !errorMessage_.isNull();
    attach(hub_.acquire(target.key(), target.framesPerSecond,
                        [backend, target] { return backend->openStream(target); }, !retrying));
}

void ScreenCaptureViewModel::stopCapture() {
    retry_.reset();
    detach();
    setCapturing(false);
    clearShown();
}

void ScreenCaptureViewModel::retryNow() { retry_.retrySoon(); }

void ScreenCaptureViewModel::attach(std::shared_ptr<SharedCapture> capture) {
    capture_ = std::move(capture);
    shown_.sequence = 0;
    SharedCapture* shared = capture_.get();
    frameConnection_ = connect(shared, &SharedCapture::frameAvailable, this, &ScreenCaptureViewModel::takeLatestFrame);
    pointerConnection_ = connect(shared, &SharedCapture::pointerInsideChanged, this,
                                 &ScreenCaptureViewModel::setMouseOverWindow);
    failureConnection_ = connect(shared, &SharedCapture::failed, this, &ScreenCaptureViewModel::fail);
    emit captureChanged();
    // A capture that other views already run may have news for this one.
    if (!shared->errorMessage().isEmpty()) return fail(shared->errorMessage());
    setMouseOverWindow(shared->pointerInside());
    takeLatestFrame();
}

void ScreenCaptureViewModel::detach() {
    disconnect(frameConnection_);
    disconnect(pointerConnection_);
    disconnect(failureConnection_);
    if (!capture_) return;
    capture_.reset();  // the last holder stops the capture thread
    emit captureChanged();
}

void ScreenCaptureViewModel::fail(const QString& reason) {
    const QString message = QStringLiteral("Capture error: ") + reason;
    if (errorMessage_.isNull()) {
        // Which source it is, where it has a name: several may fail alike.
        const std::string name = currentSource_ ? currentSource_->name : std::string();
        logLine("❌ " + message.toStdString() + (name.empty() ? "" : " (" + name + ")"));
    }
    keepUntilNoticeIsOver(capture_, this);
    detach();
    clearShown();  // a dead source's last picture would pass for a live one
    setErrorMessage(message);
    setCapturing(false);
    setMouseOverWindow(false);
    retry_.scheduleAfterFailure();
}

void ScreenCaptureViewModel::takeLatestFrame() {
    if (!capture_) return;
    CapturedFrame frame = capture_->latestFrame();
    if (frame.sequence == 0 || frame.sequence == shown_.sequence) return;
    shown_ = std::move(frame);
    if (!errorMessage_.isNull()) {
        logLine("✅ Capture recovered: " + capture_->key().toStdString());
        retry_.reset();
        setErrorMessage(QString());
        setCapturing(true);
    }
    emit capturedImageChanged();
}

void ScreenCaptureViewModel::clearShown() {
    shown_.sequence = 0;
    if (shown_.image.isNull()) return;
    shown_.image = QImage();
    emit capturedImageChanged();
}

void ScreenCaptureViewModel::setCapturing(bool capturing) {
    if (isCapturing_ == capturing) return;
    isCapturing_ = capturing;
    emit isCapturingChanged();
}

void ScreenCaptureViewModel::setErrorMessage(const QString& message) {
    if (errorMessage_ == message && errorMessage_.isNull() == message.isNull()) return;
    errorMessage_ = message;
    emit errorMessageChanged();
}

void ScreenCaptureViewModel::setMouseOverWindow(bool inside) {
    if (isMouseOverWindow_ == inside) return;
    isMouseOverWindow_ = inside;
    emit isMouseOverWindowChanged();
}

}  // namespace orvane
