#include "console/onboarding/PermissionsManagementView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/onboarding/OnboardingView.h"
#include "console/onboarding/PermissionsManager.h"
#include "console/onboarding/SystemSettingsLauncher.h"

namespace orvane {

namespace {
QLabel* iconLabel(std::string_view symbol, double size, const QColor& color) {
    auto* label = new QLabel;
    label->setPixmap(Symbols::pixmap(symbol, size, color));
    return label;
}

QLabel* text(const QString& value, double size, Theme::Weight weight = Theme::Weight::regular,
             const QString& color = QStringLiteral("white")) {
    auto* label = new QLabel(value);
    label->setFont(Theme::font(size, weight));
    label->setWordWrap(true);
    label->setStyleSheet(QStringLiteral("color: %1;").arg(color));
    return label;
}

// A full-width row: a leading symbol, the label, and a trailing symbol.
QPushButton* actionRow(const QString& label, std::string_view leading, std::string_view trailing) {
    auto* button = new QPushButton;
    button->setAccessibleName(label);
    button->setCursor(Qt::PointingHandCursor);
    button->setMinimumHeight(38);
    button->setStyleSheet(QStringLiteral("QPushButton { background: rgba(255,255,255,0.1); border: none;"
                                         " border-radius: 8px; } QPushButton:hover { background: rgba(255,255,255,0.16); }"));
    auto* row = new QHBoxLayout(button);
    row->setContentsMargins(12, 6, 12, 6);
    row->setSpacing(8);
    QLabel* lead = iconLabel(leading, 14, Theme::purple());
    QLabel* name = text(label, 13, Theme::Weight::medium);
    for (QLabel* part : {lead, name}) part->setAttribute(Qt::WA_TransparentForMouseEvents);
    row->addWidget(lead);
    row->addWidget(name, 1);
    if (!trailing.empty()) {
        QLabel* trail = iconLabel(trailing, 12, Theme::white(0.5));
        trail->setAttribute(Qt::WA_TransparentForMouseEvents);
        row->addWidget(trail);
    }
    return button;
}
}  // namespace

PermissionsManagementView::PermissionsManagementView(QSettings& settings, QWidget* parent)
    : QDialog(parent), settings_(settings) {
    setWindowTitle(QStringLiteral("Permissions Management"));
    setModal(true);
    setMinimumSize(560, 560);
    permissions_ = new PermissionsManager(settings_, {}, this);
    connect(permissions_, &PermissionsManager::screenCapturePermissionStatusChanged, this,
            &PermissionsManagementView::refresh);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    panel_ = new QWidget;
    outer->addWidget(panel_);
    auto* column = new QVBoxLayout(panel_);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(14);

    auto* head = new QHBoxLayout;
    head->addWidget(iconLabel("lock.shield.fill", 24, Theme::purple()));
    auto* titles = new QVBoxLayout;
    titles->addWidget(text(QStringLiteral("Permissions Management"), 20, Theme::Weight::bold));
    titles->addWidget(text(QStringLiteral("Manage application permissions"), 12, Theme::Weight::regular,
                           QStringLiteral("#8e8e93")));
    head->addLayout(titles, 1);
    auto* close = new SymbolButton(QString(), "xmark.circle.fill");
    SymbolButton::Look closeLook;
    closeLook.foreground = Theme::gray();
    closeLook.background = Qt::transparent;
    closeLook.symbolSize = 20;
    close->setLook(closeLook);
    close->setHelpText(QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    head->addWidget(close, 0, Qt::AlignTop);
    column->addLayout(head);

    auto* intro = new QHBoxLayout;
    intro->addWidget(iconLabel("info.circle.fill", 18, Theme::blue()), 0, Qt::AlignTop);
    auto* introText = new QVBoxLayout;
    introText->addWidget(text(QStringLiteral("Information"), 14, Theme::Weight::semibold));
    introText->addWidget(text(QStringLiteral("Orvane Pro requires certain system permissions to function correctly. "
                                             "You can review and manage these permissions from here."),
                              12, Theme::Weight::regular, QStringLiteral("rgba(255,255,255,0.75)")));
    intro->addLayout(introText, 1);
    column->addLayout(intro);

    column->addWidget(text(QStringLiteral("Required Permissions"), 14, Theme::Weight::semibold));
    auto* permissionRow = new QHBoxLayout;
    permissionRow->addWidget(iconLabel("rectangle.on.rectangle", 20, Theme::purple()));
    auto* permissionText = new QVBoxLayout;
    permissionText->addWidget(text(QStringLiteral("Screen Recording"), 13, Theme::Weight::semibold));
    permissionText->addWidget(text(QStringLiteral("Required to capture your screen and windows during streams"), 11,
                                   Theme::Weight::regular, QStringLiteral("#8e8e93")));
    permissionRow->addLayout(permissionText, 1);
    badge_ = new SymbolButton(QString(), "questionmark.circle.fill");
    badge_->setFocusPolicy(Qt::NoFocus);
    permissionRow->addWidget(badge_);
    configure_ = new SymbolButton(QStringLiteral("Configure"), std::string());
    connect(configure_, &QPushButton::clicked, this, &PermissionsManagementView::handlePermissionRequest);
    permissionRow->addWidget(configure_);
    column->addLayout(permissionRow);

    auto* assistant = actionRow(QStringLiteral("Open Setup Assistant"), "sparkles", "chevron.right");
    connect(assistant, &QPushButton::clicked, this, &PermissionsManagementView::showOnboarding);
    column->addWidget(assistant);
    systemSettings_ = actionRow(QStringLiteral("Open System Settings"), "gearshape.fill", "arrow.up.forward.app");
    connect(systemSettings_, &QPushButton::clicked, this, [] { PermissionsManager::openPrivacySettings(); });
    column->addWidget(systemSettings_);
    systemSettingsHint_ = text(QString::fromUtf8(SystemSettingsLauncher::whatToCheck), 11, Theme::Weight::regular,
                               QStringLiteral("#8e8e93"));
    column->addWidget(systemSettingsHint_);
    const bool canOpenSettings = SystemSettingsLauncher::available();
    systemSettings_->setVisible(canOpenSettings);
    systemSettingsHint_->setVisible(!canOpenSettings);
    auto* reset = actionRow(QStringLiteral("Reset Welcome Assistant"), "arrow.counterclockwise", {});
    connect(reset, &QPushButton::clicked, this, [this] {
        permissions_->setHasCompletedOnboarding(false);
        showOnboarding();
    });
    column->addWidget(reset);
    column->addStretch();

    auto* footer = new QHBoxLayout;
    footer->addWidget(iconLabel("exclamationmark.triangle.fill", 14, Theme::orange()));
    footer->addWidget(text(QStringLiteral("Some permissions require restarting the application to apply completely"),
                           11, Theme::Weight::regular, QStringLiteral("#8e8e93")),
                      1);
    auto* done = new SymbolButton(QStringLiteral("Close"), std::string());
    connect(done, &QPushButton::clicked, this, &QDialog::accept);
    footer->addWidget(done);
    column->addLayout(footer);
    refresh();
}

void PermissionsManagementView::refresh() {
    const PermissionStatus status = permissions_->screenCapturePermissionStatus();
    QColor color = Theme::orange();
    std::string symbol = "questionmark.circle.fill";
    switch (status) {
    case PermissionStatus::granted:
        color = Theme::green();
        symbol = "checkmark.circle.fill";
        break;
    case PermissionStatus::denied:
        color = Theme::red();
        symbol = "xmark.circle.fill";
        break;
    case PermissionStatus::restricted: symbol = "xmark.circle.fill"; break;
    case PermissionStatus::unknown: break;
    }
    badge_->setLabel(PermissionsManager::badgeText(status));
    badge_->setSymbol(symbol);
    SymbolButton::Look look;
    look.foreground = color;
    look.background = Theme::withAlpha(color, 0.15);
    look.fontSize = 11;
    look.symbolSize = 11;
    badge_->setLook(look);
    configure_->setVisible(status != PermissionStatus::granted);
}

void PermissionsManagementView::handlePermissionRequest() {
    if (!permissions_->requestScreenCapturePermission()) PermissionsManager::openPrivacySettings();
}

void PermissionsManagementView::showOnboarding() {
    if (onboarding_) return;
    onboarding_ = new OnboardingView(settings_);
    connect(onboarding_, &OnboardingView::finished, this, [this] {
        permissions_->setHasCompletedOnboarding(true);
        accept();
    });
    panel_->hide();
    layout()->addWidget(onboarding_);
    resize(std::max(width(), 760), std::max(height(), 620));
}

}  // namespace orvane
