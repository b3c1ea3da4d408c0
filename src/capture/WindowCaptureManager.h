#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>
#include <vector>

#include "capture/CaptureResult.h"
#include "capture/CaptureWindow.h"
#include "capture/ShareableWindow.h"

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
    ~WindowCaptureManager() override;

    // Lists on a worker thread; isLoading stays true until the result is
    // published on the main thread. A failure keeps the previous list and
    // sets errorMessage. Of overlapping fetches the later one wins.
    void fetchAvailableWindows();
    std::optional<QImage> getWindowThumbnail(std::uint32_t windowId);
    void bringWindowToFront(std::uint32_t windowId);

    QList<CaptureWindow> availableWindows() const { return availableWindows_; }
    bool isLoading() const { return isLoading_; }
    QString errorMessage() const { return errorMessage_; }
    // As in ScreenCaptureManager: set by a declined listing, cleared by
    // every fetch.
    bool needsPermission() const { return needsPermission_; }

signals:
    void availableWindowsChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void needsPermissionChanged();

private:
    using Listing = CaptureResult<std::vector<ShareableWindow>>;
    void publish(const Listing& listed);
    void setLoading(bool loading);
    void setErrorMessage(const QString& message);
    void setNeedsPermission(bool needed);

    CaptureBackend& backend_;
    QList<CaptureWindow> availableWindows_;
    bool isLoading_ = false;
    QString errorMessage_;
    bool needsPermission_ = false;
    QFutureWatcher<Listing> fetch_;       // the fetch whose result counts
    std::vector<QFuture<Listing>> running_;  // every fetch not yet waited for
};

}  // namespace orvane
