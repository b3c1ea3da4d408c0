#include "teleprompter/TeleprompterSection.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

#include "paint/SymbolPainter.h"
#include "engine/StreamManager.h"
#include "teleprompter/TeleprompterConfigView.h"
#include "teleprompter/TeleprompterManager.h"
#include "teleprompter/TeleprompterSettings.h"

namespace orvane {

namespace {

QIcon symbolIcon(const char* symbol, const QColor& color) {
    QPixmap picture(32, 32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    SymbolPainter::draw(painter, symbol, QPointF(16, 16), 28, color);
    return QIcon(picture);
}

QLabel* small(const QString& text, int pixelSize, const QString& color) {
    auto* label = new QLabel(text);
    label->setStyleSheet(QStringLiteral("color: %1; font-size: %2px;").arg(color).arg(pixelSize));
    return label;
}

}  // namespace

TeleprompterSection::TeleprompterSection(StreamManager& streamManager, TeleprompterManager& manager, QWidget* parent)
    : QWidget(parent), streamManager_(&streamManager), manager_(&manager) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);

    auto* head = new QHBoxLayout;
    auto* titles = new QVBoxLayout;
    titles->setSpacing(2);
    auto* title = small(QStringLiteral("TELEPROMPTER"), 11, QStringLiteral("white"));
    title->setStyleSheet(title->styleSheet() + QStringLiteral(" font-weight: 600;"));
    titles->addWidget(title);
    titles->addWidget(small(QStringLiteral("Display scrolling text overlay"), 10, QStringLiteral("gray")));
    enable_ = new QCheckBox;  // the switch's label "Enable" is for screen readers only
    enable_->setAccessibleName(QStringLiteral("Enable"));
    enable_->setToolTip(QStringLiteral("Enable"));
    head->addLayout(titles, 1);
    head->addWidget(enable_, 0, Qt::AlignTop);
    column->addLayout(head);

    details_ = new QWidget;
    auto* detailColumn = new QVBoxLayout(details_);
    detailColumn->setContentsMargins(0, 0, 0, 0);
    detailColumn->setSpacing(8);
    auto* buttons = new QHBoxLayout;
    window_ = new QPushButton;
    window_->setMinimumHeight(32);
    settings_ = new QPushButton;
    settings_->setIcon(symbolIcon("gear", Qt::white));
    settings_->setFixedSize(32, 32);
    settings_->setToolTip(QStringLiteral("Teleprompter Settings"));
    settings_->setAccessibleName(QStringLiteral("Teleprompter Settings"));
    buttons->addWidget(window_, 1);
    buttons->addWidget(settings_);
    detailColumn->addLayout(buttons);

    auto* readout = new QGridLayout;
    readout->setHorizontalSpacing(8);
    readout->addWidget(small(QStringLiteral("Opacity"), 9, QStringLiteral("gray")), 0, 0);
    readout->addWidget(small(QStringLiteral("Always on Top"), 9, QStringLiteral("gray")), 0, 1);
    readout->addWidget(small(QStringLiteral("Screen Share"), 9, QStringLiteral("gray")), 0, 2);
    opacity_ = small(QString(), 11, QStringLiteral("white"));
    onTop_ = small(QString(), 11, QStringLiteral("white"));
    share_ = small(QString(), 11, QStringLiteral("white"));
    share_->setToolTip(QString::fromLatin1(TeleprompterConfigView::unsupportedHint));
    readout->addWidget(opacity_, 1, 0);
    readout->addWidget(onTop_, 1, 1);
    shareIcon_ = new QLabel;
    auto* shareRow = new QHBoxLayout;
    shareRow->setSpacing(3);
    shareRow->addWidget(shareIcon_);
    shareRow->addWidget(share_, 1);
    readout->addLayout(shareRow, 1, 2);
    detailColumn->addLayout(readout);

    previewTitle_ = small(QStringLiteral("Preview"), 10, QStringLiteral("gray"));
    preview_ = small(QString(), 11, QStringLiteral("rgba(255,255,255,200)"));
    preview_->setWordWrap(true);
    detailColumn->addWidget(previewTitle_);
    detailColumn->addWidget(preview_);
    column->addWidget(details_);

    connect(enable_, &QCheckBox::toggled, this, &TeleprompterSection::setEnabledInPreset);
    connect(window_, &QPushButton::clicked, this, [this] {
        if (!manager_) return;
        if (manager_->isTeleprompterWindowOpen())
            manager_->closeTeleprompterWindow();
        else
            manager_->openTeleprompterWindow();
    });
    connect(settings_, &QPushButton::clicked, this, &TeleprompterSection::openConfigSheet);
    connect(&streamManager, &StreamManager::currentPresetChanged, this, &TeleprompterSection::refresh);
    connect(&manager, &TeleprompterManager::isTeleprompterWindowOpenChanged, this, &TeleprompterSection::refresh);
    refresh();
}

void TeleprompterSection::setEnabledInPreset(bool enabled) {
    if (!streamManager_ || !streamManager_->currentPreset()) return;
    // Settings are created with their defaults the first time.
    TeleprompterConfig settings = teleprompterSettings(streamManager_).value_or(TeleprompterConfig{});
    if (settings.enabled == enabled && teleprompterSettings(streamManager_)) return;
    settings.enabled = enabled;
    storeTeleprompterSettings(streamManager_, settings);
}

void TeleprompterSection::openConfigSheet() {
    if (!streamManager_) return;
    if (sheet_) {
        sheet_->raise();
        sheet_->activateWindow();
        return;
    }
    // An open teleprompter floats above every window. The sheet belongs to
    // it then, so that the window manager keeps the sheet above it, and
    // floats as well; otherwise it would open underneath and out of reach.
    QWidget* prompter = manager_ ? manager_->teleprompterWindow() : nullptr;
    const bool aboveTeleprompter = prompter && prompter->isVisible();
    sheet_ = new TeleprompterConfigView(*streamManager_,
                                        teleprompterSettings(streamManager_).value_or(TeleprompterConfig{}), manager_,
                                        aboveTeleprompter ? prompter : window());
    sheet_->setAttribute(Qt::WA_DeleteOnClose);
    if (aboveTeleprompter && prompter->windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        sheet_->setWindowFlag(Qt::WindowStaysOnTopHint, true);
    // Modal for the whole console, as the sheet always was.
    sheet_->setWindowModality(Qt::ApplicationModal);
    sheet_->show();
    sheet_->raise();
    sheet_->activateWindow();
}

void TeleprompterSection::refresh() {
    const auto settings = teleprompterSettings(streamManager_);
    const bool enabled = settings && settings->enabled;
    {
        const QSignalBlocker quiet(enable_);
        enable_->setChecked(enabled);
    }
    details_->setVisible(enabled);
    if (!settings) return;

    const bool open = manager_ && manager_->isTeleprompterWindowOpen();
    window_->setText(open ? QStringLiteral("Close Teleprompter") : QStringLiteral("Open Teleprompter"));
    window_->setAccessibleName(window_->text());
    window_->setIcon(symbolIcon(open ? "eye.slash.fill" : "eye.fill", Qt::white));
    window_->setToolTip(open ? QStringLiteral("Close the teleprompter window")
                             : QStringLiteral("Open teleprompter window - Click pencil button inside to edit text "
                                              "in real-time"));
    window_->setStyleSheet(open ? QStringLiteral("QPushButton { background: rgba(255,59,48,153); color: white; "
                                                 "border-radius: 6px; }")
                                : QStringLiteral("QPushButton { background: rgb(175,82,222); color: white; "
                                                 "border-radius: 6px; }"));

    opacity_->setText(QStringLiteral("%1%").arg(std::lround(settings->opacity * 100)));
    onTop_->setText(settings->alwaysOnTop ? QStringLiteral("Yes") : QStringLiteral("No"));
    share_->setText(settings->hideFromScreenShare ? QStringLiteral("Hidden") : QStringLiteral("Visible"));
    shareIcon_->setPixmap(symbolIcon(settings->hideFromScreenShare ? "eye.slash.fill" : "eye.fill", Qt::white)
                              .pixmap(12, 12));

    const QString text = QString::fromStdString(settings->text);
    previewTitle_->setVisible(!text.isEmpty());
    preview_->setVisible(!text.isEmpty());
    // At most two lines, cut with an ellipsis.
    const QFontMetrics metrics(preview_->font());
    const int width = std::max(120, details_->width());
    QString shown = metrics.elidedText(QString(text).replace(u'\n', u' '), Qt::ElideRight, width * 2 - 20);
    preview_->setText(shown);
    preview_->setAccessibleName(QStringLiteral("Preview"));
    preview_->setAccessibleDescription(text);
}

}  // namespace orvane
