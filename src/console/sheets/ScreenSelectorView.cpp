#include "console/sheets/ScreenSelectorView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "capture/ScreenCaptureManager.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/sheets/CaptureListPanel.h"
#include "console/sheets/CaptureTile.h"

namespace orvane {

ScreenSelectorView::ScreenSelectorView(CaptureBackend* backend, std::optional<std::uint32_t> selectedId,
                                       QWidget* parent)
    : QDialog(parent), selectedId_(selectedId) {
    setWindowTitle(QStringLiteral("Select Display"));
    setModal(true);
    resize(560, 460);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);
    auto* head = new QHBoxLayout;
    head->addWidget(SidebarStyle::label(QStringLiteral("Select Display"), 18, Theme::Weight::bold), 1);
    auto* close = SidebarStyle::iconButton("xmark.circle.fill", QStringLiteral("Close"), Theme::gray(), 18);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    head->addWidget(close);
    column->addLayout(head);
    body_ = new CaptureListPanel;
    column->addWidget(body_, 1);

    if (!backend) {
        body_->showError(QStringLiteral("Screen capture is not available in this build."), false, QString());
        body_->retryButton()->hide();
        return;
    }
    manager_ = new ScreenCaptureManager(*backend, this);
    connect(manager_, &ScreenCaptureManager::isLoadingChanged, this, &ScreenSelectorView::refresh);
    connect(manager_, &ScreenCaptureManager::availableDisplaysChanged, this, &ScreenSelectorView::refresh);
    connect(manager_, &ScreenCaptureManager::errorMessageChanged, this, &ScreenSelectorView::refresh);
    connect(body_, &CaptureListPanel::retryRequested, manager_, &ScreenCaptureManager::fetchAvailableDisplays);
    manager_->fetchAvailableDisplays();
    refresh();
}

void ScreenSelectorView::choose(const CaptureDisplay& display) {
    emit displayChosen(display);
    accept();
}

void ScreenSelectorView::refresh() {
    if (manager_->isLoading()) {
        body_->showLoading(QStringLiteral("Loading displays..."));
    } else if (!manager_->errorMessage().isEmpty()) {
        body_->showError(manager_->errorMessage(), manager_->needsPermission(),
                         QStringLiteral("Grant permission and try Screen Capture again"));
    } else if (manager_->availableDisplays().isEmpty()) {
        body_->showEmpty("display.trianglebadge.exclamationmark", QStringLiteral("No displays found"));
    } else {
        std::vector<CaptureTile*> tiles;
        std::vector<CaptureListPanel::ThumbnailFetch> fetches;
        CaptureTile::Look look;
        look.thumbnailSize = {120, 80};
        look.cornerRadius = 8;
        look.detailSymbol = "rectangle.resize";
        for (const CaptureDisplay& display : manager_->availableDisplays()) {
            auto* tile = new CaptureTile(display.displayName(),
                                         QStringLiteral("%1 × %2").arg(display.width).arg(display.height), look);
            if (display.name.contains(QStringLiteral("Main"))) tile->setBadge(QStringLiteral("PRIMARY"));
            tile->setSelected(selectedId_ && *selectedId_ == display.id);
            connect(tile, &QPushButton::clicked, this, [this, display] { choose(display); });
            tiles.push_back(tile);
            const std::uint32_t id = display.id;
            fetches.push_back([manager = manager_, id] { return manager->getDisplayThumbnail(id); });
        }
        body_->showTiles(tiles, std::move(fetches));
    }
}

}  // namespace orvane
