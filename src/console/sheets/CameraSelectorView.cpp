#include "console/sheets/CameraSelectorView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "capture/CameraBackend.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/sheets/CaptureListPanel.h"
#include "console/sheets/CaptureTile.h"

namespace orvane {

CameraSelectorView::CameraSelectorView(CameraBackend* backend, std::optional<QString> selectedId, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(QStringLiteral("Select Camera"));
    setModal(true);
    resize(440, 380);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);
    auto* head = new QHBoxLayout;
    head->addWidget(SidebarStyle::label(QStringLiteral("Select Camera"), 18, Theme::Weight::bold), 1);
    auto* cancel = new SymbolButton(QStringLiteral("Cancel"), std::string());
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    head->addWidget(cancel);
    column->addLayout(head);
    body_ = new CaptureListPanel;
    column->addWidget(body_, 1);

    if (backend) cameras_ = backend->cameras();
    if (cameras_.empty()) {
        body_->showEmpty("video.slash", QStringLiteral("No cameras found"));
        return;
    }
    CaptureTile::Look look;
    look.thumbnailSize = {};
    look.symbol = "video.fill";
    std::vector<CaptureTile*> tiles;
    for (const CameraDevice& camera : cameras_) {
        auto* tile = new CaptureTile(camera.name.isEmpty() ? camera.id : camera.name, camera.id, look);
        tile->setSelected(selectedId && *selectedId == camera.id);
        connect(tile, &QPushButton::clicked, this, [this, camera] { choose(camera); });
        tiles.push_back(tile);
    }
    body_->showTiles(tiles);
}

void CameraSelectorView::choose(const CameraDevice& camera) {
    emit cameraChosen(camera);
    accept();
}

}  // namespace orvane
