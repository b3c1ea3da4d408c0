#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>
#include <vector>

#include "capture/CaptureDisplay.h"
#include "capture/CaptureResult.h"

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
    ~ScreenCaptureManager() override;

    // Lists on a worker thread; isLoading stays true until the result is
    // published on the main thread. A failure keeps the previous list and
    // sets errorMessage. Of overlapping fetches the later one wins.
    void fetchAvailableDisplays();
    std::optional<QImage> getDisplayThumbnail(std::uint32_t displayId);

    QList<CaptureDisplay> availableDisplays() const { return availableDisplays_; }
    bool isLoading() const { return isLoading_; }
    QString errorMessage() const { return errorMessage_; }
    // True after a listing the backend declined (CaptureResult::declined);
    // errorMessage then asks for permission. X11 never declines, so this
    // stays false there. Every fetch starts by clearing it.
    bool needsPermission() const { return needsPermission_; }

signals:
    void availableDisplaysChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void needsPermissionChanged();

private:
    using Listing = CaptureResult<std::vector<CaptureDisplay>>;
    void publish(const Listing& listed);
    void setLoading(bool loading);
    void setErrorMessage(const QString& message);
    void setNeedsPermission(bool needed);

    CaptureBackend& backend_;
    QList<CaptureDisplay> availableDisplays_;
    bool isLoading_ = false;
    QString errorMessage_;
    bool needsPermission_ = false;
    QFutureWatcher<Listing> fetch_;       // the fetch whose result counts
    std::vector<QFuture<Listing>> running_;  // every fetch not yet waited for
};

}  // namespace orvane
