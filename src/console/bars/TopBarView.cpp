#include "console/bars/TopBarView.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>

#include "console/bars/WindowManager.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "engine/StreamManager.h"
#include "remote/WebServerManager.h"

namespace orvane {

namespace {
SymbolButton::Look optionToggleLook(bool on, const QColor& tint) {
    SymbolButton::Look look;
    look.foreground = on ? Qt::white : Theme::white(0.6);
    look.background = on ? Theme::withAlpha(tint, 0.8) : Theme::white(0.08);
    look.fontSize = 11;
    look.symbolSize = 11;
    look.paddingY = 5;
    return look;
}

SymbolButton* plainIconButton(std::string symbol, const QString& help, const QColor& color, double size) {
    auto* button = new SymbolButton(QString(), std::move(symbol));
    SymbolButton::Look look;
    look.foreground = color;
    look.background = Qt::transparent;
    look.symbolSize = size;
    look.paddingX = 3;
    look.paddingY = 3;
    button->setLook(look);
    button->setHelpText(help);
    return button;
}
}  // namespace

TopBarView::TopBarView(StreamManager& streamManager, WindowManager& windowManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager), windowManager_(windowManager) {
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Theme::sidebarGround());
    setPalette(pal);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(14, 8, 14, 8);
    row->setSpacing(10);

    auto* tile = new QLabel;
    tile->setFixedSize(34, 34);
    tile->setAlignment(Qt::AlignCenter);
    tile->setStyleSheet(QStringLiteral("background: #af52de; border-radius: 8px;"));
    tile->setPixmap(Symbols::pixmap("play.tv", 20, Qt::white));
    row->addWidget(tile);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(0);
    auto* title = new QLabel(QStringLiteral("Orvane Control Panel"));
    title->setFont(Theme::font(14, Theme::Weight::bold));
    titles->addWidget(title);
    auto* subtitle = new QLabel(QStringLiteral("Manage scenes and configuration"));
    subtitle->setFont(Theme::font(11));
    subtitle->setStyleSheet(QStringLiteral("color: #8e8e93;"));
    titles->addWidget(subtitle);
    row->addLayout(titles);
    row->addSpacing(16);

    // The preset block.
    auto* stackIcon = new QLabel;
    stackIcon->setPixmap(Symbols::pixmap("square.stack.3d.up.fill", 14, Theme::purple()));
    row->addWidget(stackIcon);
    nameBlock_ = new QStackedWidget;
    auto* reading = new QWidget;
    auto* readingRow = new QHBoxLayout(reading);
    readingRow->setContentsMargins(0, 0, 0, 0);
    nameLabel_ = new QLabel;
    nameLabel_->setFont(Theme::font(13, Theme::Weight::semibold));
    readingRow->addWidget(nameLabel_);
    auto* pencil = plainIconButton("pencil", QStringLiteral("Edit preset name"), Theme::white(0.7), 12);
    connect(pencil, &QPushButton::clicked, this, &TopBarView::startEditing);
    readingRow->addWidget(pencil);
    readingRow->addStretch();
    auto* editing = new QWidget;
    auto* editingRow = new QHBoxLayout(editing);
    editingRow->setContentsMargins(0, 0, 0, 0);
    nameField_ = new QLineEdit;
    nameField_->setPlaceholderText(QStringLiteral("Preset name"));
    nameField_->setAccessibleName(QStringLiteral("Preset name"));
    nameField_->setMinimumWidth(160);
    connect(nameField_, &QLineEdit::returnPressed, this, &TopBarView::savePresetName);
    editingRow->addWidget(nameField_);
    auto* confirm = plainIconButton("checkmark.circle.fill", QStringLiteral("Save preset name"), Theme::green(), 16);
    connect(confirm, &QPushButton::clicked, this, &TopBarView::savePresetName);
    editingRow->addWidget(confirm);
    auto* cancel = plainIconButton("xmark.circle.fill", QStringLiteral("Cancel editing"), Theme::gray(), 16);
    connect(cancel, &QPushButton::clicked, this, &TopBarView::cancelEditing);
    editingRow->addWidget(cancel);
    nameBlock_->addWidget(reading);
    nameBlock_->addWidget(editing);
    nameBlock_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    row->addWidget(nameBlock_);
    row->addStretch(1);

    alwaysOnTop_ = new SymbolButton(QStringLiteral("Always on Top"), "pin.slash");
    connect(alwaysOnTop_, &QPushButton::clicked, this,
            [this] { windowManager_.setIsAlwaysOnTop(!windowManager_.isAlwaysOnTop()); });
    row->addWidget(alwaysOnTop_);
    visibleInShare_ = new SymbolButton(QStringLiteral("Visible in Share"), "eye.slash");
    visibleInShare_->setToolTip(QString::fromLatin1(WindowManager::sharingUnsupportedHint));
    connect(visibleInShare_, &QPushButton::clicked, this,
            [this] { windowManager_.setIsVisibleInScreenShare(!windowManager_.isVisibleInScreenShare()); });
    row->addWidget(visibleInShare_);
    auto* permissions = new SymbolButton(QStringLiteral("Permissions"), "lock.shield.fill");
    permissions->setLook(optionToggleLook(false, Theme::purple()));
    connect(permissions, &QPushButton::clicked, this, &TopBarView::permissionsRequested);
    row->addWidget(permissions);

    remote_ = new SymbolButton(QStringLiteral("Remote"), "appletvremote.gen1");
    SymbolButton::Look remoteLook = optionToggleLook(true, Theme::green());
    remote_->setLook(remoteLook);
    connect(remote_, &QPushButton::clicked, this, [this] {
        if (webServer_) QDesktopServices::openUrl(QUrl(webServer_->accessUrl()));
    });
    row->addWidget(remote_);

    presets_ = new SymbolButton(QStringLiteral("Presets"), "house.fill");
    presets_->setLook(optionToggleLook(true, Theme::purple()));
    connect(presets_, &QPushButton::clicked, this, &TopBarView::changePresetRequested);
    row->addWidget(presets_);

    // Kept without an action, as it always was.
    auto* close = plainIconButton("xmark", QStringLiteral("Close"), Theme::white(0.6), 12);
    row->addWidget(close);

    connect(&windowManager_, &WindowManager::isAlwaysOnTopChanged, this, &TopBarView::refreshWindowOptions);
    connect(&windowManager_, &WindowManager::isVisibleInScreenShareChanged, this, &TopBarView::refreshWindowOptions);
    refreshWindowOptions();
    refreshServer();
}

void TopBarView::setWebServer(WebServerManager* server) {
    if (webServer_) disconnect(webServer_, nullptr, this, nullptr);
    webServer_ = server;
    if (webServer_)
        connect(webServer_, &WebServerManager::isServerRunningChanged, this, &TopBarView::refreshServer);
    refreshServer();
}

void TopBarView::refreshServer() { remote_->setVisible(webServer_ && webServer_->isServerRunning()); }

void TopBarView::refreshWindowOptions() {
    const bool onTop = windowManager_.isAlwaysOnTop();
    alwaysOnTop_->setSymbol(onTop ? "pin.fill" : "pin.slash");
    alwaysOnTop_->setLook(optionToggleLook(onTop, Theme::blue()));
    const bool visible = windowManager_.isVisibleInScreenShare();
    visibleInShare_->setSymbol(visible ? "eye.fill" : "eye.slash");
    visibleInShare_->setLook(optionToggleLook(visible, Theme::blue()));
}

void TopBarView::setPresetName(const QString& name) {
    presetName_ = name;
    nameLabel_->setText(name);
    nameLabel_->setAccessibleName(name);
}

void TopBarView::startEditing() {
    nameField_->setText(presetName_);
    setEditing(true);
    nameField_->setFocus();
    nameField_->selectAll();
}

void TopBarView::savePresetName() {
    const QString edited = nameField_->text();
    if (!edited.isEmpty()) {
        setPresetName(edited);
        emit presetNameEdited(edited);
    }
    setEditing(false);
}

void TopBarView::cancelEditing() { setEditing(false); }

void TopBarView::setEditing(bool editing) {
    if (isEditingPreset_ == editing) return;
    isEditingPreset_ = editing;
    nameBlock_->setCurrentIndex(editing ? 1 : 0);
    emit isEditingPresetChanged(editing);
}

}  // namespace orvane
