#pragma once

#include <QObject>
#include <QPointer>

namespace orvane {

class WebServerManager;

// What the remote tab shows of the server. The server starts asynchronously
// and reports nothing, so after each switch this polls: every 0.2 s, at most
// eleven checks, then it settles on the server's real state.
class RemoteServerStatusPoller : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool localServerRunning READ localServerRunning NOTIFY localServerRunningChanged)

public:
    static constexpr int kMaxAttempt = 10;
    static constexpr int kDelayMs = 200;

    explicit RemoteServerStatusPoller(WebServerManager* manager, QObject* parent = nullptr);

    bool localServerRunning() const { return localServerRunning_; }

    // The switch and the "Enable Remote Control" button.
    void setServerEnabled(bool wanted);
    // When the tab is first shown: take the server's flag, without polling.
    void syncWithServer();
    // One link of the chain; the check itself runs after the delay.
    void checkServerStatus(int attempt);

signals:
    void localServerRunningChanged(bool running);
    // The chain ended after `checks` checks.
    void statusSettled(int checks);

private:
    void runCheck(int attempt);
    void setLocalServerRunning(bool running);

    QPointer<WebServerManager> manager_;
    bool localServerRunning_ = false;
};

}  // namespace orvane
