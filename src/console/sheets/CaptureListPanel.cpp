#include "console/sheets/CaptureListPanel.h"

#include <QLabel>
#include <QProgressBar>
#include <QScrollArea>
#include <QStackedLayout>
#include <QTimer>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/onboarding/PermissionsManager.h"
#include "console/onboarding/SystemSettingsLauncher.h"
#include "console/sheets/CaptureTile.h"

namespace orvane {

namespace {
QWidget* centred(std::initializer_list<QWidget*> widgets) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addStretch();
    for (QWidget* w : widgets) column->addWidget(w, 0, Qt::AlignHCenter);
    column->addStretch();
    return page;
}
}  // namespace

CaptureListPanel::CaptureListPanel(QWidget* parent) : QWidget(parent) {
    stack_ = new QStackedLayout(this);

    auto* busy = new QProgressBar;
    busy->setRange(0, 0);
    busy->setFixedWidth(160);
    busy->setTextVisible(false);
    busy->setAccessibleName(QStringLiteral("Loading"));
    loadingText_ = SidebarStyle::label(QString(), 12, Theme::Weight::regular, Theme::gray());
    stack_->addWidget(centred({busy, loadingText_}));

    errorText_ = SidebarStyle::label(QString(), 12);
    errorText_->setWordWrap(true);
    errorText_->setAlignment(Qt::AlignCenter);
    retry_ = new SymbolButton(QStringLiteral("Retry"), std::string());
    connect(retry_, &QPushButton::clicked, this, &CaptureListPanel::retryRequested);
    settings_ = new SymbolButton(QStringLiteral("Open System Settings"), std::string());
    connect(settings_, &QPushButton::clicked, this, [] { PermissionsManager::openPrivacySettings(); });
    hint_ = SidebarStyle::caption(QString(), 11);
    stack_->addWidget(centred({SidebarStyle::symbol("exclamationmark.triangle", 32, Theme::orange()), errorText_,
                               retry_, settings_, hint_}));

    emptySymbol_ = new QLabel;
    emptyText_ = SidebarStyle::label(QString(), 12, Theme::Weight::regular, Theme::gray());
    stack_->addWidget(centred({emptySymbol_, emptyText_}));

    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* holder = new QWidget;
    list_ = new QVBoxLayout(holder);
    list_->setContentsMargins(0, 0, 4, 0);
    list_->setSpacing(8);
    list_->addStretch();
    scroll->setWidget(holder);
    stack_->addWidget(scroll);
}

QString CaptureListPanel::message() const {
    switch (state_) {
        case State::loading: return loadingText_->text();
        case State::error: return errorText_->text();
        case State::empty: return emptyText_->text();
        case State::list: return {};
    }
    return {};
}

void CaptureListPanel::showLoading(const QString& text) {
    state_ = State::loading;
    loadingText_->setText(text);
    stack_->setCurrentIndex(0);
}

void CaptureListPanel::showError(const QString& message, bool needsPermission, const QString& hint) {
    state_ = State::error;
    errorText_->setText(message);
    // The button only where the desktop's settings program is known; else
    // the hint says what to check.
    const bool canOpenSettings = needsPermission && SystemSettingsLauncher::available();
    settings_->setVisible(canOpenSettings);
    hint_->setVisible(needsPermission);
    hint_->setText(canOpenSettings || !needsPermission ? hint : QString::fromUtf8(SystemSettingsLauncher::whatToCheck));
    stack_->setCurrentIndex(1);
}

void CaptureListPanel::showEmpty(const std::string& symbol, const QString& text) {
    state_ = State::empty;
    clearTiles();
    emptySymbol_->setPixmap(Symbols::pixmap(symbol, 40, Theme::gray()));
    emptyText_->setText(text);
    stack_->setCurrentIndex(2);
}

void CaptureListPanel::showTiles(const std::vector<CaptureTile*>& tiles, std::vector<ThumbnailFetch> fetches) {
    state_ = State::list;
    clearTiles();
    tiles_ = tiles;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        list_->insertWidget(list_->count() - 1, tiles[i]);
        if (i < fetches.size() && fetches[i]) pending_.emplace_back(tiles[i], std::move(fetches[i]));
    }
    stack_->setCurrentIndex(3);
    if (!pending_.empty()) QTimer::singleShot(0, this, &CaptureListPanel::fetchNextThumbnail);
}

void CaptureListPanel::clearTiles() {
    pending_.clear();
    for (CaptureTile* tile : tiles_) tile->deleteLater();
    tiles_.clear();
}

void CaptureListPanel::fetchNextThumbnail() {
    while (!pending_.empty()) {
        auto [tile, fetch] = std::move(pending_.front());
        pending_.pop_front();
        if (!tile) continue;
        if (auto image = fetch()) tile->setThumbnail(*image);
        break;
    }
    if (!pending_.empty()) QTimer::singleShot(0, this, &CaptureListPanel::fetchNextThumbnail);
}

}  // namespace orvane
