#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>

#include "capture/CaptureDisplay.h"

namespace orvane {

class CaptureBackend;

// The display list behind the display sheet. Short-lived, main thread.
class ScreenCaptureManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<orvane::CaptureDisplay> availableDisplays READ availableDisplays NOTIFY availableDisplaysChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool needsPermission READ needsPermission NOTIFY needsPermissionChanged)

public:
    explicit ScreenCaptureManager(CaptureBackend& backend, QObject* parent = nullptr);

    // A failure keeps the previous list and sets errorMessage.
    void fetchAvailableDisplays();
    std::optional<QImage> getDisplayThumbnail(std::uint32_t displayId);

    QList<CaptureDisplay> availableDisplays() const { return availableDisplays_; }
    bool isLoading() const { return isLoading_; }
    QString errorMessage() const { return errorMessage_; }
    // X11 never declines a listing, so this stays false there; a portal
    // backend that is refused sets it.
    bool needsPermission() const { return needsPermission_; }

signals:
    void availableDisplaysChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void needsPermissionChanged();

private:
    void setLoading(bool loading);
    void setErrorMessage(const QString& message);

    CaptureBackend& backend_;
    QList<CaptureDisplay> availableDisplays_;
    bool isLoading_ = false;
    QString errorMessage_;
    bool needsPermission_ = false;
};

}  // namespace orvane
