#include "capture/CaptureListManager.h"

#include <QtConcurrent/QtConcurrentRun>

#include "capture/CaptureError.h"
#include "document/Log.h"

namespace orvane {

CaptureListManager::CaptureListManager(CaptureBackend& backend, QString failurePrefix, QObject* parent)
    : QObject(parent), backend_(backend), failurePrefix_(std::move(failurePrefix)) {
    connect(&fetch_, &QFutureWatcher<Published>::finished, this, [this] { publish(fetch_.result()); });
}

CaptureListManager::~CaptureListManager() {
    // The worker uses the backend; let it finish (a few round trips).
    fetch_.disconnect();
    for (QFuture<Published>& fetch : running_) fetch.waitForFinished();
}

void CaptureListManager::start(std::function<Published()> work) {
    setLoading(true);
    setErrorMessage(QString());
    setNeedsPermission(false);
    std::erase_if(running_, [](const QFuture<Published>& fetch) { return fetch.isFinished(); });
    running_.push_back(QtConcurrent::run(std::move(work)));
    fetch_.setFuture(running_.back());
}

void CaptureListManager::publish(const Published& listed) {
    if (listed.wasDeclined()) {
        setNeedsPermission(true);
        setErrorMessage(permissionRequiredMessage());
        logLine("❌ " + errorMessage_.toStdString() + " (" + listed.error().toStdString() + ")");
    } else if (!listed) {
        setErrorMessage(failurePrefix_ + listed.error());
        logLine("❌ " + errorMessage_.toStdString());
    } else {
        listed.value()();
    }
    setLoading(false);
}

void CaptureListManager::setLoading(bool loading) {
    if (isLoading_ == loading) return;
    isLoading_ = loading;
    emit isLoadingChanged();
}

void CaptureListManager::setNeedsPermission(bool needed) {
    if (needsPermission_ == needed) return;
    needsPermission_ = needed;
    emit needsPermissionChanged();
}

void CaptureListManager::setErrorMessage(const QString& message) {
    if (errorMessage_ == message && errorMessage_.isNull() == message.isNull()) return;
    errorMessage_ = message;
    emit errorMessageChanged();
}

}  // namespace orvane
