#include "console/sidebar/RemoteTabView.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QUrl>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/sheets/QrCodeView.h"
#include "remote/QrCodeImage.h"
#include "remote/RemoteAccess.h"
#include "remote/WebServerManager.h"

namespace orvane {

RemoteTabView::RemoteTabView(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 16);
    column->setSpacing(12);

    auto* head = new QHBoxLayout;
    auto* headText = new QVBoxLayout;
    headText->setSpacing(2);
    headText->addWidget(SidebarStyle::head(QStringLiteral("REMOTE SERVER")));
    headText->addWidget(SidebarStyle::caption(QStringLiteral("Enable remote control access")));
    head->addLayout(headText, 1);
    switch_ = new ToggleSwitch(QStringLiteral("Enable Server"));
    switch_->setLabelVisible(false);
    connect(switch_, &ToggleSwitch::toggled, this, &RemoteTabView::setServerEnabled);
    head->addWidget(switch_, 0, Qt::AlignTop);
    column->addLayout(head);

    auto* portRow = new QHBoxLayout;
    portRow->addWidget(SidebarStyle::label(QStringLiteral("Port:"), 11));
    port_ = new QLineEdit;
    port_->setFixedWidth(60);
    port_->setPlaceholderText(QStringLiteral("8999"));
    port_->setAccessibleName(QStringLiteral("Port"));
    connect(port_, &QLineEdit::textEdited, this, [this](const QString& text) {
        const std::optional<quint16> port = parsePortText(text);
        if (!port) return;  // other text is ignored
        if (WebServerManager* s = server()) s->setServerPort(*port);
    });
    portRow->addWidget(port_);
    portRow->addStretch();
    column->addLayout(portRow);

    active_ = new QWidget;
    auto* active = new QVBoxLayout(active_);
    active->setContentsMargins(0, 0, 0, 0);
    active->setSpacing(10);
    auto* status = new QHBoxLayout;
    status->addWidget(SidebarStyle::symbol("checkmark.circle.fill", 14, Theme::green()));
    status->addWidget(SidebarStyle::label(QStringLiteral("Remote Control Active"), 12, Theme::Weight::semibold), 1);
    active->addLayout(status);
    active->addWidget(SidebarStyle::label(QStringLiteral("Access URL:"), 11, Theme::Weight::regular, Theme::gray()));
    auto* urlRow = new QHBoxLayout;
    url_ = SidebarStyle::label(QString(), 11, Theme::Weight::medium, Theme::purple());
    QFont mono(QStringLiteral("monospace"));
    mono.setStyleHint(QFont::Monospace);
    mono.setPixelSize(11);
    url_->setFont(mono);
    url_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    url_->setWordWrap(true);
    urlRow->addWidget(url_, 1);
    copy_ = SidebarStyle::iconButton("doc.on.doc", QStringLiteral("Copy URL"), Theme::white(0.8), 12);
    connect(copy_, &QPushButton::clicked, this, [this] {
        if (QClipboard* clipboard = QGuiApplication::clipboard()) {
            clipboard->clear();
            clipboard->setText(accessUrl());
        }
    });
    urlRow->addWidget(copy_);
    active->addLayout(urlRow);
    qr_ = new SymbolButton(QStringLiteral("Show QR Code"), "qrcode");
    connect(qr_, &QPushButton::clicked, this, [this] { showQrCode(); });
    active->addWidget(qr_);
    active->addWidget(SidebarStyle::head(QStringLiteral("QUICK ACTIONS")));
    browser_ = new SymbolButton(QStringLiteral("Open in Browser"), "safari");
    browser_->setLayoutDirection(Qt::LeftToRight);
    connect(browser_, &QPushButton::clicked, this, [this] { QDesktopServices::openUrl(QUrl(accessUrl())); });
    auto* browserRow = new QHBoxLayout;
    browserRow->addWidget(browser_, 1);
    browserRow->addWidget(SidebarStyle::symbol("arrow.up.right", 11, Theme::gray()));
    active->addLayout(browserRow);
    column->addWidget(active_);

    disabled_ = new QWidget;
    auto* disabled = new QVBoxLayout(disabled_);
    disabled->setContentsMargins(0, 16, 0, 0);
    disabled->setSpacing(10);
    disabled->addWidget(SidebarStyle::symbol("appletvremote.gen1", 48, Theme::withAlpha(Theme::gray(), 0.5)), 0,
                        Qt::AlignHCenter);
    disabled->addWidget(SidebarStyle::label(QStringLiteral("Remote Control Disabled"), 13, Theme::Weight::semibold), 0,
                        Qt::AlignHCenter);
    QLabel* explain = SidebarStyle::caption(
        QStringLiteral("Enable the remote control server to access your OrvaneUI from any device on your network"), 11);
    explain->setAlignment(Qt::AlignCenter);
    disabled->addWidget(explain);
    enable_ = new SymbolButton(QStringLiteral("Enable Remote Control"), "power");
    SymbolButton::Look look;
    look.background = Theme::withAlpha(Theme::purple(), 0.8);
    look.fontSize = 12;
    look.symbolSize = 12;
    look.paddingY = 7;
    look.radius = 8;
    enable_->setLook(look);
    connect(enable_, &QPushButton::clicked, this, [this] { setServerEnabled(true); });
    disabled->addWidget(enable_);
    column->addWidget(disabled_);
    column->addStretch();

    setWebServer(nullptr);
}

WebServerManager* RemoteTabView::server() const { return followed_; }

void RemoteTabView::setWebServer(WebServerManager* next) {
    const bool serverReplaced = !poller_ || next != followed_;
    if (followed_) disconnect(followed_, nullptr, this, nullptr);
    followed_ = next;
    if (followed_) {
        connect(followed_, &WebServerManager::isServerRunningChanged, this, &RemoteTabView::refresh);
        connect(followed_, &WebServerManager::serverPortChanged, this, &RemoteTabView::refresh);
        connect(followed_, &WebServerManager::localIPChanged, this, &RemoteTabView::refresh);
    }
    if (serverReplaced) replacePoller();
    refresh();
}

void RemoteTabView::replacePoller() {
    // The poller checks one server for its whole life: a new server gets a
    // new poller, which starts from "off" until a switch or a sync.
    const bool wasRunning = poller_ && poller_->localServerRunning();
    delete poller_;
    poller_ = new RemoteServerStatusPoller(followed_, this);
    connect(poller_, &RemoteServerStatusPoller::localServerRunningChanged, this, [this](bool running) {
        emit localServerRunningChanged(running);
        refresh();
    });
    // A chain that ends without changing the flag still redraws the tab
    // once, for the server's state as it is by then.
    connect(poller_, &RemoteServerStatusPoller::statusSettled, this, &RemoteTabView::refresh);
    if (wasRunning) emit localServerRunningChanged(false);
}

QString RemoteTabView::accessUrl() const {
    WebServerManager* s = server();
    return s ? s->accessUrl() : QString();
}

void RemoteTabView::syncWithServer() {
    poller_->syncWithServer();
    refresh();
}

void RemoteTabView::setServerEnabled(bool enabled) {
    poller_->setServerEnabled(enabled);
    refresh();
}

void RemoteTabView::checkServerStatus(int attempt) { poller_->checkServerStatus(attempt); }

QrCodeView* RemoteTabView::showQrCode() {
    WebServerManager* s = server();
    if (!s) return nullptr;
    qrCodeURLToShow_ = QRCodeURL::forServer(s->localIP(), s->serverPort());
    auto* sheet = new QrCodeView(qrCodeURLToShow_->url, [](const QString& text) { return generateQRCode(text); },
                                 window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QObject::destroyed, this, [this] { qrCodeURLToShow_.reset(); });
    sheet->open();
    return sheet;
}

void RemoteTabView::refresh() {
    WebServerManager* s = server();
    switch_->setOn(localServerRunning());
    if (!port_->hasFocus()) port_->setText(QString::number(s ? s->serverPort() : WebServerManager::kDefaultPort));
    port_->setEnabled(!(s && s->isServerRunning()));
    const bool showActive = localServerRunning() && s;
    active_->setVisible(showActive);
    disabled_->setVisible(!showActive);
    url_->setText(accessUrl());
}

}  // namespace orvane
