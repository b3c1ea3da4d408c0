#include "remote/RemoteServerStatusPoller.h"

#include <QTimer>
#include <string>

#include "document/Log.h"
#include "remote/WebServerManager.h"

namespace orvane {

namespace {
const char* text(bool value) { return value ? "true" : "false"; }
}  // namespace

RemoteServerStatusPoller::RemoteServerStatusPoller(WebServerManager* manager, QObject* parent)
    : QObject(parent), manager_(manager) {}

void RemoteServerStatusPoller::setServerEnabled(bool wanted) {
    setLocalServerRunning(wanted);
    if (manager_) {
        if (wanted)
            manager_->startServer();
        else
            manager_->stopServer();
    }
    checkServerStatus(0);
}

void RemoteServerStatusPoller::syncWithServer() { setLocalServerRunning(manager_ && manager_->isServerRunning()); }

void RemoteServerStatusPoller::checkServerStatus(int attempt) {
    QTimer::singleShot(kDelayMs, this, [this, attempt] { runCheck(attempt); });
}

void RemoteServerStatusPoller::runCheck(int attempt) {
    const bool serverRunning = manager_ && manager_->isServerRunning();
    const QString localIP = manager_ ? manager_->localIP() : QString();
    const bool hasLocalIP = manager_ && !localIP.isEmpty() && localIP != QLatin1String("localhost");
    logLine("🔍 Check attempt " + std::to_string(attempt + 1) + ": serverRunning=" + text(serverRunning) +
            ", hasLocalIP=" + text(hasLocalIP) + ", localIP='" +
            (manager_ ? localIP.toStdString() : std::string("nil")) + "'");

    if (!serverRunning && !localServerRunning_) {
        logLine("✅ Server fully inactive");
        emit statusSettled(attempt + 1);
        return;
    }
    if (serverRunning && hasLocalIP) {
        setLocalServerRunning(true);
        logLine("✅ Server fully active with IP");
        emit statusSettled(attempt + 1);
        return;
    }
    if (attempt >= kMaxAttempt) {
        setLocalServerRunning(serverRunning);
        logLine(std::string("⚠️ Timeout - syncing with real state: ") + text(serverRunning));
        emit statusSettled(attempt + 1);
        return;
    }
    checkServerStatus(attempt + 1);
}

void RemoteServerStatusPoller::setLocalServerRunning(bool running) {
    if (running == localServerRunning_) return;
    localServerRunning_ = running;
    emit localServerRunningChanged(running);
}

}  // namespace orvane
