#include "capture/WindowCaptureManager.h"

#include <QtConcurrent/QtConcurrentRun>

#include "capture/CaptureBackend.h"
#include "capture/CaptureError.h"
#include "capture/WindowListRules.h"
#include "document/Log.h"

namespace orvane {

WindowCaptureManager::WindowCaptureManager(CaptureBackend& backend, QObject* parent)
    : QObject(parent), backend_(backend) {
    connect(&fetch_, &QFutureWatcher<Listing>::finished, this, [this] { publish(fetch_.result()); });
}

WindowCaptureManager::~WindowCaptureManager() {
    // The worker uses the backend; let it finish (a few round trips).
    fetch_.disconnect();
    for (QFuture<Listing>& fetch : running_) fetch.waitForFinished();
}

void WindowCaptureManager::fetchAvailableWindows() {
    setLoading(true);
    setErrorMessage(QString());
    setNeedsPermission(false);
    CaptureBackend* backend = &backend_;
    std::erase_if(running_, [](const QFuture<Listing>& fetch) { return fetch.isFinished(); });
    running_.push_back(QtConcurrent::run([backend] { return backend->windows(); }));
    fetch_.setFuture(running_.back());
}

void WindowCaptureManager::publish(const Listing& listed) {
    if (listed.wasDeclined()) {
        setNeedsPermission(true);
        setErrorMessage(permissionRequiredMessage());
        logLine("❌ " + errorMessage_.toStdString() + " (" + listed.error().toStdString() + ")");
    } else if (!listed) {
        setErrorMessage(QStringLiteral("Error loading windows: ") + listed.error());
        logLine("❌ " + errorMessage_.toStdString());
    } else {
        availableWindows_ = WindowListRules::selectable(listed.value());
        logLine("🪟 Found " + std::to_string(availableWindows_.size()) + " windows");
        emit availableWindowsChanged();
    }
    setLoading(false);
}

std::optional<QImage> WindowCaptureManager::getWindowThumbnail(std::uint32_t windowId) {
    return backend_.windowThumbnail(windowId);
}

void WindowCaptureManager::bringWindowToFront(std::uint32_t windowId) {
    backend_.bringWindowToFront(windowId);
}

void WindowCaptureManager::setLoading(bool loading) {
    if (isLoading_ == loading) return;
    isLoading_ = loading;
    emit isLoadingChanged();
}

void WindowCaptureManager::setNeedsPermission(bool needed) {
    if (needsPermission_ == needed) return;
    needsPermission_ = needed;
    emit needsPermissionChanged();
}

void WindowCaptureManager::setErrorMessage(const QString& message) {
    if (errorMessage_ == message && errorMessage_.isNull() == message.isNull()) return;
    errorMessage_ = message;
    emit errorMessageChanged();
}

}  // namespace orvane
