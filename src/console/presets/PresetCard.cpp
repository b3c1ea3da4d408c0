#include "console/presets/PresetCard.h"

#include <QHBoxLayout>
#include <QLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include "console/controls/ConfirmDialog.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

namespace {
QLabel* passiveLabel(const QString& text, QFont font, QColor color) {
    auto* label = new QLabel(text);
    label->setFont(font);
    QPalette pal = label->palette();
    pal.setColor(QPalette::WindowText, color);
    label->setPalette(pal);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}
}  // namespace

PresetCard::PresetCard(const Preset& preset, QWidget* parent) : QPushButton(parent), preset_(preset) {
    const QString name = QString::fromStdString(preset.name);
    setAccessibleName(name);
    setToolTip(name);
    setCursor(Qt::PointingHandCursor);
    setMinimumHeight(150);
    connect(this, &QPushButton::clicked, this, [this] { emit selectRequested(preset_); });

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(6);

    auto* head = new QHBoxLayout;
    auto* icon = new QLabel;
    icon->setPixmap(Symbols::pixmap("square.stack.3d.up.fill", 24, Theme::purple()));
    icon->setAttribute(Qt::WA_TransparentForMouseEvents);
    head->addWidget(icon);
    head->addStretch();
    trash_ = new SymbolButton(QString(), "trash");
    SymbolButton::Look look;
    look.foreground = Theme::withAlpha(Theme::red(), 0.8);
    look.background = Theme::white(0.06);
    look.symbolSize = 12;
    look.paddingX = 6;
    trash_->setLook(look);
    trash_->setHelpText(QStringLiteral("Delete Preset"));
    connect(trash_, &QPushButton::clicked, this, &PresetCard::confirmDelete);
    head->addWidget(trash_);
    column->addLayout(head);

    auto* title = passiveLabel(name, Theme::font(18, Theme::Weight::semibold), Qt::white);
    title->setObjectName(QStringLiteral("presetName"));
    column->addWidget(title);
    column->addWidget(passiveLabel(sceneCountText(preset.scenes.size()), Theme::font(13), Theme::gray()));

    for (std::size_t i = 0; i < std::min<std::size_t>(3, preset.scenes.size()); ++i) {
        const auto& scene = preset.scenes[i];
        auto* row = new QHBoxLayout;
        row->setSpacing(6);
        auto* sceneIcon = new QLabel;
        sceneIcon->setPixmap(Symbols::pixmap(scene.icon, 11, Theme::white(0.6)));
        sceneIcon->setAttribute(Qt::WA_TransparentForMouseEvents);
        row->addWidget(sceneIcon);
        row->addWidget(passiveLabel(QString::fromStdString(scene.name), Theme::font(11), Theme::white(0.7)), 1);
        column->addLayout(row);
    }
    const QString remainder = remainderText(preset.scenes.size());
    if (!remainder.isEmpty()) {
        auto* more = passiveLabel(remainder, Theme::font(11), Theme::gray());
        more->setObjectName(QStringLiteral("remainder"));
        column->addWidget(more);
    }
    column->addStretch();
}

QSize PresetCard::sizeHint() const {
    // The card's size is its content's, not that of a button's label.
    return layout() ? layout()->sizeHint().expandedTo(QSize(240, 150)) : QPushButton::sizeHint();
}

QString PresetCard::sceneCountText(std::size_t count) {
    return count == 1 ? QStringLiteral("1 scene") : QStringLiteral("%1 scenes").arg(count);
}

QString PresetCard::remainderText(std::size_t count) {
    return count > 3 ? QStringLiteral("+%1 more").arg(count - 3) : QString();
}

void PresetCard::confirmDelete() {
    if (confirmation_) return;
    confirmation_ = new ConfirmDialog(
        QStringLiteral("Delete Preset"),
        QStringLiteral("Are you sure you want to delete '%1'? This action cannot be undone.")
            .arg(QString::fromStdString(preset_.name)),
        QStringLiteral("Delete"), window());
    connect(confirmation_, &ConfirmDialog::confirmed, this, [this] { emit deleteRequested(preset_); });
    connect(confirmation_, &QObject::destroyed, this, [this] { confirmation_ = nullptr; });
    confirmation_->open();
}

void PresetCard::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 12, 12);
    p.fillPath(path, hovered_ ? Theme::white(0.09) : Theme::white(0.05));
    p.setPen(QPen(hovered_ ? Theme::withAlpha(Theme::purple(), 0.6) : Theme::white(0.1), 1));
    p.drawPath(path);
}

void PresetCard::enterEvent(QEnterEvent* event) {
    hovered_ = true;
    update();
    QPushButton::enterEvent(event);
}

void PresetCard::leaveEvent(QEvent* event) {
    hovered_ = false;
    update();
    QPushButton::leaveEvent(event);
}

}  // namespace orvane
