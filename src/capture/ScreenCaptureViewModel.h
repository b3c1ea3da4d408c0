#pragma once

#include <QImage>
#include <QMetaObject>
#include <QObject>
#include <QRect>
#include <QString>

#include <memory>
#include <optional>

#include "capture/CaptureQuality.h"
#include "capture/CaptureRetry.h"
#include "capture/SharedCapture.h"
#include "document/Source.h"

namespace orvane {

class CaptureBackend;
class CaptureHub;

// The live picture of one screen or window source for one view. States:
// idle (not capturing, no image), starting (capturing, no image), running
// (capturing, images arriving), failed (not capturing, no image,
// errorMessage set). Views of the same target share one capture through
// the hub. Main thread.
//
// A failed capture is tried again with growing delays (CaptureRetry), and
// soon after retryNow(). It stays failed across the attempts, so the view
// shows the failure steadily instead of flashing "Starting capture...",
// until a frame arrives. The failure is logged when it begins and the
// recovery when it ends, never once per attempt.
class ScreenCaptureViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QImage capturedImage READ capturedImage NOTIFY capturedImageChanged)
    Q_PROPERTY(bool isCapturing READ isCapturing NOTIFY isCapturingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool isMouseOverWindow READ isMouseOverWindow NOTIFY isMouseOverWindowChanged)

public:
    // The backend and the hub must outlive the view model.
    ScreenCaptureViewModel(CaptureBackend& backend, CaptureHub& hub, QObject* parent = nullptr);
    ~ScreenCaptureViewModel() override;

    // Failures land in errorMessage as "Capture error: " and the reason.
    void startCapture(const Source& source, const CaptureQuality& quality);
    void stopCapture();
    // What can be captured changed: a failed capture tries again on the
    // next turn of the event loop. Nothing otherwise.
    void retryNow();

    QImage capturedImage() const { return shown_.image; }
    // The frame behind capturedImage, with when it was grabbed.
    const CapturedFrame& shownFrame() const { return shown_; }
    bool isCapturing() const { return isCapturing_; }
    QString errorMessage() const { return errorMessage_; }  // null: none
    bool isMouseOverWindow() const { return isMouseOverWindow_; }

    // The rectangle the pointer is tested against; empty when the target
    // has no stored id, so the cursor is never drawn.
    QRect windowFrame() const { return windowFrame_; }
    const std::optional<Source>& currentSource() const { return currentSource_; }
    const std::optional<CaptureQuality>& currentQuality() const { return currentQuality_; }
    // The shared capture behind this view, if one runs.
    std::shared_ptr<SharedCapture> capture() const { return capture_; }
    const CaptureRetry& retry() const { return retry_; }

signals:
    void capturedImageChanged();
    void isCapturingChanged();
    void errorMessageChanged();
    void isMouseOverWindowChanged();
    // capture() is another one, or none now.
    void captureChanged();

private:
    // Lists, resolves and attaches the current source; failures go to fail.
    void attempt();
    void attach(std::shared_ptr<SharedCapture> capture);
    void detach();
    void fail(const QString& reason);
    void takeLatestFrame();
    // No picture from the current capture, and none shown.
    void clearShown();
    void setCapturing(bool capturing);
    void setErrorMessage(const QString& message);
    void setMouseOverWindow(bool inside);

    CaptureBackend& backend_;
    CaptureHub& hub_;
    std::shared_ptr<SharedCapture> capture_;
    QMetaObject::Connection frameConnection_, pointerConnection_, failureConnection_;

    CapturedFrame shown_;  // sequence 0: nothing shown from the current capture
    bool isCapturing_ = false;
    QString errorMessage_;
    bool isMouseOverWindow_ = false;
    QRect windowFrame_;
    std::optional<Source> currentSource_;
    std::optional<CaptureQuality> currentQuality_;
    CaptureRetry retry_{[this] { attempt(); }};
};

}  // namespace orvane
