#pragma once

#include <QPointer>
#include <QWidget>
#include <optional>

#include "remote/QRCodeURL.h"
#include "remote/RemoteServerStatusPoller.h"

class QLabel;
class QLineEdit;

namespace orvane {

class QrCodeView;
class SymbolButton;
class ToggleSwitch;
class WebServerManager;

// The remote tab: turns the remote-control server on and off, its port, the
// address a telephone opens, and the QR code of that address. The server
// starts asynchronously, so after each switch the tab's poller checks it a
// few times rather than waiting for a callback.
class RemoteTabView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool localServerRunning READ localServerRunning NOTIFY localServerRunningChanged)

public:
    static constexpr int checkIntervalMs = RemoteServerStatusPoller::kDelayMs;
    static constexpr int checkLimit = RemoteServerStatusPoller::kMaxAttempt;

    explicit RemoteTabView(QWidget* parent = nullptr);

    // The server the tab drives; a new one starts from "off" until a switch
    // or a sync.
    void setWebServer(WebServerManager* server);

    bool localServerRunning() const { return poller_->localServerRunning(); }
    // Takes the server's state as it is, without polling.
    void syncWithServer();
    // Both the switch and "Enable Remote Control" come here.
    void setServerEnabled(bool enabled);
    void checkServerStatus(int attempt);
    QrCodeView* showQrCode();

    ToggleSwitch* serverSwitch() const { return switch_; }
    QLineEdit* portField() const { return port_; }
    QLabel* urlText() const { return url_; }
    SymbolButton* copyButton() const { return copy_; }
    SymbolButton* qrButton() const { return qr_; }
    SymbolButton* browserButton() const { return browser_; }
    SymbolButton* enableButton() const { return enable_; }
    QWidget* activeBlock() const { return active_; }
    QWidget* disabledBlock() const { return disabled_; }

signals:
    void localServerRunningChanged(bool running);

private:
    WebServerManager* server() const;
    void replacePoller();
    void refresh();
    QString accessUrl() const;

    QPointer<WebServerManager> followed_;
    // Bound to the followed server; replaced with it.
    RemoteServerStatusPoller* poller_ = nullptr;
    std::optional<QRCodeURL> qrCodeURLToShow_;
    ToggleSwitch* switch_ = nullptr;
    QLineEdit* port_ = nullptr;
    QWidget* active_ = nullptr;
    QLabel* url_ = nullptr;
    SymbolButton* copy_ = nullptr;
    SymbolButton* qr_ = nullptr;
    SymbolButton* browser_ = nullptr;
    QWidget* disabled_ = nullptr;
    SymbolButton* enable_ = nullptr;
};

}  // namespace orvane
