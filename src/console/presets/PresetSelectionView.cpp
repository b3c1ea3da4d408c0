#include "console/presets/PresetSelectionView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QSettings>
#include <QVBoxLayout>

#include "console/controls/AdaptiveGrid.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/presets/PresetCard.h"
#include "console/sheets/CreatePresetView.h"
#include "document/PresetStorage.h"

namespace orvane {

namespace {

// The last card: "Create New Preset".
class CreateCard : public QPushButton {
public:
    CreateCard() {
        setAccessibleName(QStringLiteral("Create New Preset"));
        setCursor(Qt::PointingHandCursor);
        setMinimumHeight(150);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
        p.setPen(QPen(Theme::withAlpha(Theme::purple(), underMouse() ? 0.9 : 0.5), 1.5, Qt::DashLine));
        p.setBrush(Theme::withAlpha(Theme::purple(), underMouse() ? 0.12 : 0.06));
        p.drawRoundedRect(r, 12, 12);
        const double cy = r.center().y();
        p.drawPixmap(QPointF(r.center().x() - 16, cy - 46), Symbols::pixmap("plus.circle.fill", 32, Theme::purple()));
        p.setPen(Qt::white);
        p.setFont(Theme::font(16, Theme::Weight::semibold));
        p.drawText(QRectF(r.left(), cy - 6, r.width(), 22), Qt::AlignCenter, QStringLiteral("Create New Preset"));
        p.setPen(Theme::gray());
        p.setFont(Theme::font(12));
        p.drawText(QRectF(r.left(), cy + 18, r.width(), 18), Qt::AlignCenter,
                   QStringLiteral("Start from scratch or template"));
    }
};

}  // namespace

PresetSelectionView::PresetSelectionView(PresetStorage& storage, QSettings& settings, QWidget* parent)
    : QWidget(parent), storage_(storage), settings_(settings) {
    setAutoFillBackground(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(40, 32, 40, 24);
    column->setSpacing(24);

    auto* head = new QHBoxLayout;
    auto* logo = new QLabel;
    logo->setPixmap(Symbols::pixmap("play.tv", 44, Theme::purple()));
    head->addWidget(logo);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(2);
    auto* title = new QLabel(QStringLiteral("Orvane Control Panel"));
    title->setFont(Theme::font(28, Theme::Weight::bold));
    titles->addWidget(title);
    auto* subtitle = new QLabel(QStringLiteral("Select a preset to start streaming"));
    subtitle->setFont(Theme::font(14));
    subtitle->setStyleSheet(QStringLiteral("color: #8e8e93;"));
    titles->addWidget(subtitle);
    head->addLayout(titles, 1);
    auto* permissions = new SymbolButton(QStringLiteral("Permissions"), "lock.shield.fill");
    SymbolButton::Look look;
    look.fontSize = 12;
    look.symbolSize = 12;
    look.paddingY = 6;
    permissions->setLook(look);
    connect(permissions, &QPushButton::clicked, this, &PresetSelectionView::showPermissionsManagement);
    head->addWidget(permissions, 0, Qt::AlignTop);
    column->addLayout(head);

    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* holder = new QWidget;
    auto* holderLayout = new QVBoxLayout(holder);
    holderLayout->setContentsMargins(0, 0, 0, 0);
    grid_ = new AdaptiveGrid(240, 280, 16);
    holderLayout->addWidget(grid_);
    holderLayout->addStretch();
    scroll->setWidget(holder);
    column->addWidget(scroll, 1);

    reload();
}

void PresetSelectionView::reload() {
    presets_ = storage_.loadPresets();
    rebuildCards();
}

void PresetSelectionView::rebuildCards() {
    grid_->clear();
    for (const Preset& preset : presets_) {
        auto* card = new PresetCard(preset);
        connect(card, &PresetCard::selectRequested, this, &PresetSelectionView::selectPreset);
        // The card goes with the list entry; leave its own click handler first.
        connect(card, &PresetCard::deleteRequested, this,
                [this](const Preset& p) { QMetaObject::invokeMethod(this, [this, p] { deletePreset(p); }, Qt::QueuedConnection); });
        grid_->addItem(card);
    }
    auto* create = new CreateCard;
    connect(create, &QPushButton::clicked, this, [this] { showCreatePreset(); });
    grid_->addItem(create);
}

void PresetSelectionView::selectPreset(const Preset& preset) {
    settings_.setValue(QString::fromLatin1(PresetStorage::lastSelectedPresetKey),
                       QString::fromStdString(preset.id.toString()));
    settings_.sync();
    emit presetSelected(preset);
}

void PresetSelectionView::deletePreset(const Preset& preset) {
    storage_.deletePreset(preset);
    std::erase_if(presets_, [&](const Preset& p) { return p.id == preset.id; });
    rebuildCards();
}

CreatePresetView* PresetSelectionView::showCreatePreset() {
    auto* sheet = new CreatePresetView(window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &CreatePresetView::presetCreated, this, [this](const Preset& preset) {
        presets_.push_back(preset);
        storage_.savePreset(preset);
        selectPreset(preset);
    });
    sheet->open();
    return sheet;
}

void PresetSelectionView::showPermissionsManagement() { emit permissionsRequested(); }

}  // namespace orvane
