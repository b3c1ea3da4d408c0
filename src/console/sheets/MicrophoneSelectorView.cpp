#include "console/sheets/MicrophoneSelectorView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "capture/linux/PulseAudioDevices.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/sheets/CaptureListPanel.h"
#include "console/sheets/CaptureTile.h"

namespace orvane {

MicrophoneSelectorView::MicrophoneSelectorView(const std::optional<MicrophoneDevice>& selected, Lister lister,
                                               QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(QStringLiteral("Select Microphone"));
    setModal(true);
    resize(440, 380);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);
    auto* head = new QHBoxLayout;
    head->addWidget(SidebarStyle::label(QStringLiteral("Select Microphone"), 18, Theme::Weight::bold), 1);
    auto* cancel = new SymbolButton(QStringLiteral("Cancel"), std::string());
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    head->addWidget(cancel);
    column->addLayout(head);
    body_ = new CaptureListPanel;
    column->addWidget(body_, 1);

    if (lister) {
        microphones_ = lister();
    } else if (auto listed = PulseAudioDevices::microphones()) {
        microphones_ = listed.value();
    }

    CaptureTile::Look off;
    off.thumbnailSize = {};
    off.symbol = "mic.slash";
    std::vector<CaptureTile*> tiles;
    auto* none = new CaptureTile(QStringLiteral("Disable microphone recording"), QString(), off);
    none->setSelected(!selected);
    connect(none, &QPushButton::clicked, this, [this] { choose(std::nullopt); });
    tiles.push_back(none);
    if (microphones_.empty()) {
        auto* empty = new CaptureTile(QStringLiteral("No microphones found"), QStringLiteral("Check system preferences"),
                                      off);
        empty->setEnabled(false);
        tiles.push_back(empty);
    }
    CaptureTile::Look device;
    device.thumbnailSize = {};
    device.symbol = "mic.fill";
    for (const MicrophoneDevice& mic : microphones_) {
        auto* tile = new CaptureTile(mic.name.isEmpty() ? mic.id : mic.name, mic.id, device);
        tile->setSelected(selected && *selected == mic);
        connect(tile, &QPushButton::clicked, this, [this, mic] { choose(mic); });
        tiles.push_back(tile);
    }
    body_->showTiles(tiles);
}

void MicrophoneSelectorView::choose(const std::optional<MicrophoneDevice>& microphone) {
    emit microphoneChosen(microphone);
    accept();
}

}  // namespace orvane
