#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>

#include "capture/CaptureWindow.h"

namespace orvane {

class CaptureBackend;

// The window list behind the window sheet, and the way to raise a window.
// Short-lived, main thread.
class WindowCaptureManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<orvane::CaptureWindow> availableWindows READ availableWindows NOTIFY availableWindowsChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool needsPermission READ needsPermission NOTIFY needsPermissionChanged)

public:
    explicit WindowCaptureManager(CaptureBackend& backend, QObject* parent = nullptr);

    // A failure keeps the previous list and sets errorMessage.
    void fetchAvailableWindows();
    std::optional<QImage> getWindowThumbnail(std::uint32_t windowId);
    void bringWindowToFront(std::uint32_t windowId);

    QList<CaptureWindow> availableWindows() const { return availableWindows_; }
    bool isLoading() const { return isLoading_; }
    QString errorMessage() const { return errorMessage_; }
    bool needsPermission() const { return needsPermission_; }

signals:
    void availableWindowsChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void needsPermissionChanged();

private:
    void setLoading(bool loading);
    void setErrorMessage(const QString& message);

    CaptureBackend& backend_;
    QList<CaptureWindow> availableWindows_;
    bool isLoading_ = false;
    QString errorMessage_;
    bool needsPermission_ = false;
};

}  // namespace orvane
