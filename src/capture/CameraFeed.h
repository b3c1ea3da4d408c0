#pragma once

#include <QImage>
#include <QMetaObject>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

#include "capture/CaptureRetry.h"
#include "capture/SharedCapture.h"

namespace orvane {

class CameraBackend;
class CaptureHub;

// The live picture of one camera source for one view; views of the same
// camera share one capture. A device that cannot be found or opened, or
// whose stream ends, leaves no picture and sets errorMessage; it never
// falls back to another camera. Such a camera is tried again with growing
// delays, and soon after retryNow(); the failure is logged when it begins
// and the recovery when it ends. Main thread.
class CameraFeed : public QObject {
    Q_OBJECT
    Q_PROPERTY(QImage capturedImage READ capturedImage NOTIFY capturedImageChanged)
    Q_PROPERTY(QString deviceId READ deviceId NOTIFY deviceIdChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

public:
    // The backend and the hub must outlive the feed.
    CameraFeed(CameraBackend& backend, CaptureHub& hub, QObject* parent = nullptr);
    ~CameraFeed() override;

    // No id: the first camera in the list.
    void start(const std::optional<QString>& cameraDeviceId);
    void stop();
    // The cameras may have changed: a failed feed tries again on the next
    // turn of the event loop. Nothing otherwise.
    void retryNow();

    QImage capturedImage() const { return capturedImage_; }
    QString deviceId() const { return deviceId_; }  // empty while none is open
    QString errorMessage() const { return errorMessage_; }  // null: none
    std::shared_ptr<SharedCapture> capture() const { return capture_; }
    const CaptureRetry& retry() const { return retry_; }

signals:
    void capturedImageChanged();
    void deviceIdChanged();
    void errorMessageChanged();
    // capture() is another one, or none now.
    void captureChanged();

private:
    // Finds the device and attaches its capture; failures go to fail.
    void attempt();
    void fail(const QString& message);
    void release();
    void takeLatestFrame();
    void setDeviceId(const QString& id);
    void setErrorMessage(const QString& message);
    void clearImage();

    CameraBackend& backend_;
    CaptureHub& hub_;
    std::optional<std::optional<QString>> wanted_;  // set between start and stop: the device asked for
    std::shared_ptr<SharedCapture> capture_;
    std::uint64_t shownSequence_ = 0;
    QImage capturedImage_;
    QString deviceId_;
    QString errorMessage_;
    CaptureRetry retry_{[this] { attempt(); }};
};

}  // namespace orvane
