#include "console/bars/BottomBarView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/sheets/QrCodeView.h"
#include "console/version/VersionInfoView.h"
#include "engine/PerformanceMonitor.h"
#include "engine/StreamManager.h"
#include "remote/WebServerManager.h"
#include "teleprompter/TeleprompterManager.h"

namespace orvane {

namespace {
SymbolButton::Look statusToggleLook(bool on, const QColor& tint) {
    SymbolButton::Look look;
    look.foreground = on ? tint : Qt::white;
    look.background = on ? Theme::withAlpha(tint, 0.2) : Theme::white(0.1);
    look.fontSize = 11;
    look.symbolSize = 11;
    look.paddingY = 4;
    return look;
}

QString fromView(std::string_view text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

// One performance figure: symbol, label and value at 10 points, the value
// bold and monospaced.
QWidget* readout(std::string_view symbol, const QColor& color, const QString& label, QLabel*& value) {
    auto* block = new QWidget;
    auto* row = new QHBoxLayout(block);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    auto* icon = new QLabel;
    icon->setPixmap(Symbols::pixmap(symbol, 10, color));
    row->addWidget(icon);
    auto* name = new QLabel(label);
    name->setFont(Theme::font(10, Theme::Weight::medium));
    name->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.7);"));
    row->addWidget(name);
    value = new QLabel;
    value->setFont(Theme::monospaceFont(10, Theme::Weight::bold));
    value->setStyleSheet(QStringLiteral("color: white;"));
    value->setAccessibleName(label);
    row->addWidget(value);
    return block;
}
}  // namespace

BottomBarView::BottomBarView(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Theme::sidebarGround());
    setPalette(pal);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(14, 6, 14, 6);
    row->setSpacing(12);

    version_ = new VersionInfoView;
    row->addWidget(version_);
    row->addStretch(1);

    quality_ = new QToolButton;
    quality_->setPopupMode(QToolButton::InstantPopup);
    quality_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    quality_->setIcon(Symbols::icon("slider.horizontal.3", 12, Qt::white));
    quality_->setStyleSheet(QStringLiteral("QToolButton { color: white; background: rgba(255,255,255,0.1);"
                                           " border: none; border-radius: 6px; padding: 4px 8px; font-size: 11px; }"));
    auto* menu = new QMenu(quality_);
    for (StreamQuality q : allCases<StreamQuality>()) {
        QAction* action = menu->addAction(fromView(toString(q)) + QStringLiteral("  ·  ") + fromView(subtitle(q)));
        action->setCheckable(true);
        action->setData(int(q));
        connect(action, &QAction::triggered, this, [this, q] { streamManager_.setStreamQuality(q); });
    }
    quality_->setMenu(menu);
    row->addWidget(quality_);

    stats_ = new QWidget;
    auto* statsRow = new QHBoxLayout(stats_);
    statsRow->setContentsMargins(0, 0, 0, 0);
    statsRow->setSpacing(10);
    statsRow->addWidget(readout("cpu", Theme::purple(), QStringLiteral("CPU:"), cpu_));
    statsRow->addWidget(readout("memorychip", Theme::blue(), QStringLiteral("MEM:"), memory_));
    statsRow->addWidget(readout("speedometer", Theme::green(), QStringLiteral("FPS:"), fps_));
    row->addWidget(stats_);

    server_ = new QWidget;
    auto* serverRow = new QHBoxLayout(server_);
    serverRow->setContentsMargins(0, 0, 0, 0);
    serverRow->setSpacing(6);
    auto* globe = new QLabel;
    globe->setPixmap(Symbols::pixmap("globe", 12, Theme::green()));
    serverRow->addWidget(globe);
    url_ = new QLabel;
    url_->setFont(Theme::font(11, Theme::Weight::medium));
    url_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    serverRow->addWidget(url_);
    auto* copy = new SymbolButton(QString(), "doc.on.doc");
    copy->setLook(statusToggleLook(false, Theme::green()));
    copy->setHelpText(QStringLiteral("Copy URL"));
    connect(copy, &QPushButton::clicked, this, [this] {
        if (QGuiApplication::clipboard())
            QGuiApplication::clipboard()->setText(serverUrl());
    });
    serverRow->addWidget(copy);
    auto* qr = new SymbolButton(QString(), "qrcode");
    qr->setLook(statusToggleLook(false, Theme::green()));
    qr->setHelpText(QStringLiteral("Show QR Code"));
    connect(qr, &QPushButton::clicked, this, &BottomBarView::showQrCode);
    serverRow->addWidget(qr);
    row->addWidget(server_);

    teleprompter_ = new SymbolButton(QStringLiteral("Teleprompter"), "text.alignleft");
    teleprompter_->setToolTip(QStringLiteral("Toggle teleprompter window"));
    connect(teleprompter_, &QPushButton::clicked, this, [this] {
        if (!teleprompterManager_) return;
        if (teleprompterManager_->isTeleprompterWindowOpen())
            teleprompterManager_->closeTeleprompterWindow();
        else
            teleprompterManager_->openTeleprompterWindow();
    });
    row->addWidget(teleprompter_);

    blur_ = new SymbolButton(QStringLiteral("Blur"), "eye.slash");
    blur_->setToolTip(QStringLiteral("Toggle blur on screen/window sources"));
    connect(blur_, &QPushButton::clicked, &streamManager_, &StreamManager::toggleBlurMode);
    row->addWidget(blur_);
    performance_ = new SymbolButton(QStringLiteral("Performance"), "speedometer");
    connect(performance_, &QPushButton::clicked, this, [this] {
        const bool show = !streamManager_.showPerformanceStats();
        streamManager_.setShowPerformanceStats(show);
        if (show)
            streamManager_.performanceMonitor()->start();
        else
            streamManager_.performanceMonitor()->stop();
    });
    row->addWidget(performance_);

    connect(&streamManager_, &StreamManager::streamQualityChanged, this, &BottomBarView::refreshQuality);
    connect(&streamManager_, &StreamManager::isBlurModeActiveChanged, this, &BottomBarView::refreshToggles);
    connect(&streamManager_, &StreamManager::showPerformanceStatsChanged, this, &BottomBarView::refreshToggles);
    connect(streamManager_.performanceMonitor(), &PerformanceMonitor::statsChanged, this, &BottomBarView::refreshStats);
    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &BottomBarView::refreshTeleprompter);
    refreshTeleprompter();
    refreshQuality();
    refreshToggles();
    refreshStats();
    refreshServer();
}

void BottomBarView::refreshQuality() {
    const StreamQuality current = streamManager_.streamQuality();
    quality_->setText(fromView(toString(current)));
    quality_->setAccessibleName(QStringLiteral("Stream Quality"));
    for (QAction* action : quality_->menu()->actions()) action->setChecked(action->data().toInt() == int(current));
}

void BottomBarView::refreshToggles() {
    const bool blur = streamManager_.isBlurModeActive();
    blur_->setSymbol(blur ? "eye.slash.fill" : "eye.slash");
    blur_->setLook(statusToggleLook(blur, Theme::blue()));
    const bool stats = streamManager_.showPerformanceStats();
    performance_->setLook(statusToggleLook(stats, Theme::orange()));
    stats_->setVisible(stats);
}

void BottomBarView::setTeleprompterManager(TeleprompterManager* teleprompter) {
    if (teleprompterManager_) disconnect(teleprompterManager_, nullptr, this, nullptr);
    teleprompterManager_ = teleprompter;
    if (teleprompter)
        connect(teleprompter, &TeleprompterManager::isTeleprompterWindowOpenChanged, this,
                &BottomBarView::refreshTeleprompter);
    refreshTeleprompter();
}

void BottomBarView::refreshTeleprompter() {
    // Only while the preset has the teleprompter switched on, open or not.
    const auto& preset = streamManager_.currentPreset();
    const bool enabled = teleprompterManager_ && preset && preset->teleprompter && preset->teleprompter->enabled;
    teleprompter_->setVisible(enabled);
    const bool open = teleprompterManager_ && teleprompterManager_->isTeleprompterWindowOpen();
    teleprompter_->setSymbol(open ? "text.alignleft.fill" : "text.alignleft");
    teleprompter_->setLook(statusToggleLook(open, Theme::purple()));
}

void BottomBarView::refreshStats() {
    const PerformanceMonitor* monitor = streamManager_.performanceMonitor();
    cpu_->setText(QString::asprintf("%.1f%%", monitor->cpuUsage()));
    memory_->setText(QString::asprintf("%.0f MB", monitor->memoryUsage()));
    fps_->setText(QString::number(monitor->fps()));
}

void BottomBarView::setWebServer(WebServerManager* server) {
    if (webServer_) disconnect(webServer_, nullptr, this, nullptr);
    webServer_ = server;
    if (webServer_) {
        connect(webServer_, &WebServerManager::isServerRunningChanged, this, &BottomBarView::refreshServer);
        connect(webServer_, &WebServerManager::localIPChanged, this, &BottomBarView::refreshServer);
        connect(webServer_, &WebServerManager::serverPortChanged, this, &BottomBarView::refreshServer);
    }
    refreshServer();
}

QString BottomBarView::serverUrl() const { return webServer_ ? webServer_->accessUrl() : QString(); }

void BottomBarView::showQrCode() {
    auto* sheet = new QrCodeView(serverUrl(), qrCodeGenerator_, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}

void BottomBarView::refreshServer() {
    const bool running = webServer_ && webServer_->isServerRunning();
    server_->setVisible(running);
    if (running) url_->setText(serverUrl());
}

}  // namespace orvane
