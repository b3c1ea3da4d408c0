#include "capture/CameraFeed.h"

#include "capture/CameraBackend.h"
#include "capture/CaptureHub.h"
#include "document/Log.h"

namespace orvane {

CameraFeed::CameraFeed(CameraBackend& backend, CaptureHub& hub, QObject* parent)
    : QObject(parent), backend_(backend), hub_(hub) {}

CameraFeed::~CameraFeed() { stop(); }

void CameraFeed::start(const std::optional<QString>& cameraDeviceId) {
    stop();
    const std::vector<CameraDevice> devices = backend_.cameras();
    QString id;
    if (cameraDeviceId) {
        for (const CameraDevice& device : devices)
            if (device.id == *cameraDeviceId) id = device.id;
    } else if (!devices.empty()) {
        id = devices.front().id;
    }
    if (id.isEmpty()) {
        logLine("❌ No camera device found");
        return;
    }
    setDeviceId(id);
    CameraBackend* backend = &backend_;
    capture_ = hub_.acquire(QStringLiteral("camera:") + id, 0, [backend, id] { return backend->openCamera(id); });
    frameConnection_ = connect(capture_.get(), &SharedCapture::frameAvailable, this, &CameraFeed::takeLatestFrame);
    connect(capture_.get(), &SharedCapture::failed, this,
            [](const QString& message) { logLine("❌ Error setting up camera: " + message.toStdString()); });
    takeLatestFrame();
}

void CameraFeed::stop() {
    if (capture_) disconnect(capture_.get(), nullptr, this, nullptr);
    capture_.reset();
    shownSequence_ = 0;
    setDeviceId(QString());
    if (!capturedImage_.isNull()) {
        capturedImage_ = QImage();
        emit capturedImageChanged();
    }
}

void CameraFeed::takeLatestFrame() {
    if (!capture_) return;
    CapturedFrame frame = capture_->latestFrame();
    if (frame.sequence == 0 || frame.sequence == shownSequence_) return;
    shownSequence_ = frame.sequence;
    capturedImage_ = std::move(frame.image);
    emit capturedImageChanged();
}

void CameraFeed::setDeviceId(const QString& id) {
    if (deviceId_ == id) return;
    deviceId_ = id;
    emit deviceIdChanged();
}

}  // namespace orvane
