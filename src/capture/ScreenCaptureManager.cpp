#include "capture/ScreenCaptureManager.h"

#include <QtConcurrent/QtConcurrentRun>

#include "capture/CaptureBackend.h"
#include "capture/CaptureError.h"
#include "document/Log.h"

namespace orvane {

ScreenCaptureManager::ScreenCaptureManager(CaptureBackend& backend, QObject* parent)
    : QObject(parent), backend_(backend) {
    connect(&fetch_, &QFutureWatcher<Listing>::finished, this, [this] { publish(fetch_.result()); });
}

ScreenCaptureManager::~ScreenCaptureManager() {
    // The worker uses the backend; let it finish (a few round trips).
    fetch_.disconnect();
    for (QFuture<Listing>& fetch : running_) fetch.waitForFinished();
}

void ScreenCaptureManager::fetchAvailableDisplays() {
    setLoading(true);
    setErrorMessage(QString());
    setNeedsPermission(false);
    CaptureBackend* backend = &backend_;
    std::erase_if(running_, [](const QFuture<Listing>& fetch) { return fetch.isFinished(); });
    running_.push_back(QtConcurrent::run([backend] { return backend->displays(); }));
    fetch_.setFuture(running_.back());
}

void ScreenCaptureManager::publish(const Listing& listed) {
    if (listed.wasDeclined()) {
        setNeedsPermission(true);
        setErrorMessage(permissionRequiredMessage());
        logLine("❌ " + errorMessage_.toStdString() + " (" + listed.error().toStdString() + ")");
    } else if (!listed) {
        setErrorMessage(QStringLiteral("Error loading displays: ") + listed.error());
        logLine("❌ " + errorMessage_.toStdString());
    } else {
        availableDisplays_ = QList<CaptureDisplay>(listed.value().begin(), listed.value().end());
        logLine("🖥️ Found " + std::to_string(availableDisplays_.size()) + " displays");
        emit availableDisplaysChanged();
    }
    setLoading(false);
}

std::optional<QImage> ScreenCaptureManager::getDisplayThumbnail(std::uint32_t displayId) {
    return backend_.displayThumbnail(displayId);
}

void ScreenCaptureManager::setLoading(bool loading) {
    if (isLoading_ == loading) return;
    isLoading_ = loading;
    emit isLoadingChanged();
}

void ScreenCaptureManager::setNeedsPermission(bool needed) {
    if (needsPermission_ == needed) return;
    needsPermission_ = needed;
    emit needsPermissionChanged();
}

void ScreenCaptureManager::setErrorMessage(const QString& message) {
    if (errorMessage_ == message && errorMessage_.isNull() == message.isNull()) return;
    errorMessage_ = message;
    emit errorMessageChanged();
}

}  // namespace orvane
