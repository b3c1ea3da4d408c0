#pragma once

#include <QImage>
#include <QMetaObject>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

#include "capture/SharedCapture.h"

namespace orvane {

class CameraBackend;
class CaptureHub;

// The live picture of one camera source for one view; views of the same
// camera share one capture. A device that cannot be found or opened leaves
// the picture empty (the tile stays black) and says so only in the log; it
// never falls back to another camera. Main thread.
class CameraFeed : public QObject {
    Q_OBJECT
    Q_PROPERTY(QImage capturedImage READ capturedImage NOTIFY capturedImageChanged)
    Q_PROPERTY(QString deviceId READ deviceId NOTIFY deviceIdChanged)

public:
    // The backend and the hub must outlive the feed.
    CameraFeed(CameraBackend& backend, CaptureHub& hub, QObject* parent = nullptr);
    ~CameraFeed() override;

    // No id: the first camera in the list.
    void start(const std::optional<QString>& cameraDeviceId);
    void stop();

    QImage capturedImage() const { return capturedImage_; }
    QString deviceId() const { return deviceId_; }  // empty while none is open
    std::shared_ptr<SharedCapture> capture() const { return capture_; }

signals:
    void capturedImageChanged();
    void deviceIdChanged();

private:
    void takeLatestFrame();
    void setDeviceId(const QString& id);

    CameraBackend& backend_;
    CaptureHub& hub_;
    std::shared_ptr<SharedCapture> capture_;
    QMetaObject::Connection frameConnection_;
    std::uint64_t shownSequence_ = 0;
    QImage capturedImage_;
    QString deviceId_;
};

}  // namespace orvane
