#include "capture/CameraFeed.h"

#include "capture/CameraBackend.h"
#include "capture/CaptureHub.h"
#include "document/Log.h"

namespace orvane {

CameraFeed::CameraFeed(CameraBackend& backend, CaptureHub& hub, QObject* parent)
    : QObject(parent), backend_(backend), hub_(hub) {}

CameraFeed::~CameraFeed() { release(); }

void CameraFeed::start(const std::optional<QString>& cameraDeviceId) {
    stop();
    wanted_ = cameraDeviceId;
    attempt();
}

void CameraFeed::stop() {
    retry_.reset();
    wanted_.reset();
    release();
    setDeviceId(QString());
    setErrorMessage(QString());
    clearImage();
}

void CameraFeed::retryNow() { retry_.retrySoon(); }

void CameraFeed::attempt() {
    release();
    if (!wanted_) return;
    const std::vector<CameraDevice> devices = backend_.cameras();
    QString id;
    if (*wanted_) {
        for (const CameraDevice& device : devices)
            if (device.id == **wanted_) id = device.id;
    } else if (!devices.empty()) {
        id = devices.front().id;
    }
    if (id.isEmpty()) return fail(QStringLiteral("No camera device found"));
    setDeviceId(id);
    CameraBackend* backend = &backend_;
    const bool retrying = !errorMessage_.isNull();
    capture_ = hub_.acquire(QStringLiteral("camera:") + id, 0, [backend, id] { return backend->openCamera(id); },
                            !retrying);
    connect(capture_.get(), &SharedCapture::frameAvailable, this, &CameraFeed::takeLatestFrame);
    connect(capture_.get(), &SharedCapture::failed, this, [this](const QString& message) {
        fail(QStringLiteral("Error setting up camera: ") + message);
    });
    emit captureChanged();
    if (!capture_->errorMessage().isEmpty())
        return fail(QStringLiteral("Error setting up camera: ") + capture_->errorMessage());
    takeLatestFrame();
}

void CameraFeed::fail(const QString& message) {
    if (errorMessage_.isNull()) {
        const QString device = wanted_ && *wanted_ ? **wanted_ : QStringLiteral("the first camera");
        logLine("❌ " + message.toStdString() + " (" + device.toStdString() + ")");
    }
    keepUntilNoticeIsOver(capture_, this);
    release();
    setDeviceId(QString());
    clearImage();
    setErrorMessage(message);
    retry_.scheduleAfterFailure();
}

void CameraFeed::release() {
    shownSequence_ = 0;
    if (!capture_) return;
    disconnect(capture_.get(), nullptr, this, nullptr);
    capture_.reset();
    emit captureChanged();
}

void CameraFeed::takeLatestFrame() {
    if (!capture_) return;
    CapturedFrame frame = capture_->latestFrame();
    if (frame.sequence == 0 || frame.sequence == shownSequence_) return;
    shownSequence_ = frame.sequence;
    capturedImage_ = std::move(frame.image);
    if (!errorMessage_.isNull()) {
        logLine("✅ Camera recovered: " + deviceId_.toStdString());
        retry_.reset();
        setErrorMessage(QString());
    }
    emit capturedImageChanged();
}

void CameraFeed::setDeviceId(const QString& id) {
    if (deviceId_ == id) return;
    deviceId_ = id;
    emit deviceIdChanged();
}

void CameraFeed::setErrorMessage(const QString& message) {
    if (errorMessage_ == message && errorMessage_.isNull() == message.isNull()) return;
    errorMessage_ = message;
    emit errorMessageChanged();
}

void CameraFeed::clearImage() {
    if (capturedImage_.isNull()) return;
    capturedImage_ = QImage();
    emit capturedImageChanged();
}

}  // namespace orvane
