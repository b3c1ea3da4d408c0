#include "console/sheets/WindowSelectorView.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "capture/WindowCaptureManager.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/sheets/CaptureListPanel.h"
#include "console/sheets/CaptureTile.h"

namespace orvane {

WindowSelectorView::WindowSelectorView(CaptureBackend* backend, std::optional<std::uint32_t> selectedId,
                                       QWidget* parent)
    : QDialog(parent), selectedId_(selectedId) {
    setWindowTitle(QStringLiteral("Select Window to Capture"));
    setModal(true);
    resize(600, 520);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);
    auto* head = new QHBoxLayout;
    head->addWidget(SidebarStyle::label(QStringLiteral("Select Window to Capture"), 18, Theme::Weight::bold), 1);
    auto* cancel = new SymbolButton(QStringLiteral("Cancel"), std::string());
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    head->addWidget(cancel);
    column->addLayout(head);

    auto* searchRow = new QHBoxLayout;
    searchRow->setSpacing(6);
    searchRow->addWidget(SidebarStyle::symbol("magnifyingglass", 14, Theme::gray()));
    search_ = new QLineEdit;
    search_->setPlaceholderText(QStringLiteral("Search windows..."));
    search_->setAccessibleName(QStringLiteral("Search windows"));
    searchRow->addWidget(search_, 1);
    clear_ = SidebarStyle::iconButton("xmark.circle.fill", QStringLiteral("Clear Search"), Theme::gray(), 14);
    clear_->hide();
    connect(clear_, &QPushButton::clicked, search_, &QLineEdit::clear);
    searchRow->addWidget(clear_);
    column->addLayout(searchRow);
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
        clear_->setVisible(!text.isEmpty());
        if (manager_) refresh();
    });

    body_ = new CaptureListPanel;
    column->addWidget(body_, 1);
    if (!backend) {
        body_->showError(QStringLiteral("Window capture is not available in this build."), false, QString());
        body_->retryButton()->hide();
        return;
    }
    manager_ = new WindowCaptureManager(*backend, this);
    connect(manager_, &WindowCaptureManager::isLoadingChanged, this, &WindowSelectorView::refresh);
    connect(manager_, &WindowCaptureManager::availableWindowsChanged, this, &WindowSelectorView::refresh);
    connect(manager_, &WindowCaptureManager::errorMessageChanged, this, &WindowSelectorView::refresh);
    connect(body_, &CaptureListPanel::retryRequested, manager_, &WindowCaptureManager::fetchAvailableWindows);
    manager_->fetchAvailableWindows();
    refresh();
}

QList<CaptureWindow> WindowSelectorView::filter(const QList<CaptureWindow>& windows, const QString& search) {
    if (search.isEmpty()) return windows;
    QList<CaptureWindow> out;
    for (const CaptureWindow& w : windows)
        if (w.displayName().contains(search, Qt::CaseInsensitive)) out.push_back(w);
    return out;
}

void WindowSelectorView::choose(const CaptureWindow& window) {
    emit windowChosen(window);
    accept();
}

void WindowSelectorView::refresh() {
    if (manager_->isLoading()) {
        body_->showLoading(QStringLiteral("Loading windows..."));
        return;
    }
    if (!manager_->errorMessage().isEmpty()) {
        body_->showError(manager_->errorMessage(), manager_->needsPermission(),
                         QStringLiteral("Grant permission and return to the app"));
        return;
    }
    const QList<CaptureWindow> shown = filter(manager_->availableWindows(), search_->text());
    if (shown.isEmpty()) {
        body_->showEmpty("macwindow", search_->text().isEmpty() ? QStringLiteral("No windows available")
                                                                : QStringLiteral("No windows found"));
        return;
    }
    std::vector<CaptureTile*> tiles;
    std::vector<CaptureListPanel::ThumbnailFetch> fetches;
    CaptureTile::Look look;
    look.thumbnailSize = {180, 120};
    look.cornerRadius = 6;
    for (const CaptureWindow& window : shown) {
        auto* tile = new CaptureTile(window.displayName(),
                                     QStringLiteral("%1 × %2").arg(window.bounds.width()).arg(window.bounds.height()),
                                     look);
        tile->setSelected(selectedId_ && *selectedId_ == window.id);
        connect(tile, &QPushButton::clicked, this, [this, window] { choose(window); });
        tiles.push_back(tile);
        const std::uint32_t id = window.id;
        fetches.push_back([manager = manager_, id] { return manager->getWindowThumbnail(id); });
    }
    body_->showTiles(tiles, std::move(fetches));
}

}  // namespace orvane
