#include "console/scene_list/SceneItemView.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimer>

#include "console/controls/ConfirmDialog.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

SceneItemView::SceneItemView(const StreamingScene& scene, int sceneNumber, bool isSelected, bool canDelete,
                             QWidget* parent)
    : QPushButton(parent), scene_(scene), sceneNumber_(sceneNumber), isSelected_(isSelected), canDelete_(canDelete) {
    setAccessibleName(QString::fromStdString(scene.name));
    setAccessibleDescription(sceneNumber <= 9 ? QStringLiteral("Key %1").arg(sceneNumber) : QString());
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setMinimumHeight(46);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    trash_ = new SymbolButton(QString(), "trash", this);
    SymbolButton::Look look;
    look.foreground = Theme::withAlpha(Theme::red(), 0.8);
    look.background = Qt::transparent;
    look.symbolSize = 10;
    look.paddingX = 4;
    look.paddingY = 4;
    trash_->setLook(look);
    trash_->setHelpText(QStringLiteral("Delete Scene"));
    trash_->hide();
    connect(trash_, &QPushButton::clicked, this, &SceneItemView::confirmDelete);
    connect(this, &QPushButton::clicked, this, &SceneItemView::press);
}

void SceneItemView::setLive(bool live) {
    if (isLive_ == live) return;
    isLive_ = live;
    QStringList description;
    if (sceneNumber_ <= 9) description << QStringLiteral("Key %1").arg(sceneNumber_);
    if (live) description << QStringLiteral("Live on program");
    setAccessibleDescription(description.join(QStringLiteral(", ")));
    update();
}

bool SceneItemView::isDeleteButtonVisible() const { return trash_->isVisibleTo(this); }

QString SceneItemView::sourceCountText(std::size_t count) {
    if (count == 0) return QStringLiteral("No sources");
    return count == 1 ? QStringLiteral("1 source") : QStringLiteral("%1 sources").arg(count);
}

void SceneItemView::press() {
    setJustSelected(true);
    emit selectRequested(scene_);
    QTimer::singleShot(300, this, [this] { setJustSelected(false); });
}

void SceneItemView::setJustSelected(bool value) {
    if (justSelected_ == value) return;
    justSelected_ = value;
    update();
    emit justSelectedChanged(value);
}

void SceneItemView::setHovering(bool hovering) {
    isHovering_ = hovering;
    trash_->setVisible(hovering && canDelete_);
    update();
}

void SceneItemView::confirmDelete() {
    if (confirmation_) return;
    confirmation_ = new ConfirmDialog(
        QStringLiteral("Delete Scene"),
        QStringLiteral("Are you sure you want to delete '%1'? This action cannot be undone.")
            .arg(QString::fromStdString(scene_.name)),
        QStringLiteral("Delete"), window());
    const StreamingScene scene = scene_;
    connect(confirmation_, &ConfirmDialog::confirmed, this, [this, scene] { emit deleteRequested(scene); });
    connect(confirmation_, &QObject::destroyed, this, [this] { confirmation_ = nullptr; });
    confirmation_->open();
}

void SceneItemView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(4, 2, -4, -2);
    QPainterPath path;
    path.addRoundedRect(r, 8, 8);
    if (isSelected_) {
        p.fillPath(path, Theme::withAlpha(Theme::purple(), 0.15));
        p.setPen(QPen(Theme::purple(), 1.5));
        p.drawPath(path);
    } else if (isHovering_) {
        p.fillPath(path, Theme::white(0.05));
    }

    // Badge: the key's number up to 9, none beyond.
    const double badge = justSelected_ ? 22 * 1.1 : 22;
    const QPointF badgeCentre(r.left() + 8 + 11, r.center().y());
    p.setPen(Qt::NoPen);
    p.setBrush(isSelected_ ? Theme::purple() : Theme::gray());
    p.drawEllipse(badgeCentre, badge / 2, badge / 2);
    if (sceneNumber_ <= 9) {
        p.setPen(Qt::white);
        p.setFont(Theme::font(10, Theme::Weight::bold));
        p.drawText(QRectF(badgeCentre.x() - 11, badgeCentre.y() - 11, 22, 22), Qt::AlignCenter,
                   QString::number(sceneNumber_));
    }

    const double x = r.left() + 38;
    const QColor iconColor = isSelected_ ? Theme::purple() : Theme::white(0.6);
    p.drawPixmap(QPointF(x, r.top() + 8), Symbols::pixmap(scene_.icon, 12, iconColor));
    const QFont nameFont = Theme::font(12, isSelected_ ? Theme::Weight::semibold : Theme::Weight::medium);
    p.setFont(nameFont);
    p.setPen(Qt::white);
    const double nameLeft = x + 17;
    const double available = r.right() - nameLeft - (isDeleteButtonVisible() ? 22 : 4) - (sceneNumber_ <= 9 ? 20 : 0);
    const QString name = QFontMetricsF(nameFont).elidedText(QString::fromStdString(scene_.name), Qt::ElideRight,
                                                            std::max(10.0, available));
    const QRectF nameRect(nameLeft, r.top() + 5, std::max(10.0, available), 18);
    p.drawText(nameRect, Qt::AlignLeft | Qt::AlignVCenter, name);
    if (sceneNumber_ <= 9) {
        p.setFont(Theme::font(9));
        p.setPen(Theme::white(0.7));
        const double nameWidth = QFontMetricsF(nameFont).horizontalAdvance(name);
        p.drawText(QRectF(nameLeft + nameWidth + 4, r.top() + 5, 24, 18), Qt::AlignLeft | Qt::AlignVCenter,
                   QStringLiteral("(%1)").arg(sceneNumber_));
    }
    p.setFont(Theme::font(10));
    p.setPen(Theme::gray());
    p.drawText(QRectF(x, r.top() + 24, r.right() - x - 6, 16), Qt::AlignLeft | Qt::AlignVCenter,
               sourceCountText(scene_.sources.size()));
    if (isLive_) {
        // Right of the source count, clear of the delete button above it.
        const QFont tagFont = Theme::font(8, Theme::Weight::bold);
        const QString tag = QStringLiteral("LIVE");
        const double w = QFontMetricsF(tagFont).horizontalAdvance(tag) + 10;
        const QRectF box(r.right() - 8 - w, r.top() + 25, w, 14);
        QPainterPath pill;
        pill.addRoundedRect(box, 4, 4);
        p.fillPath(pill, Theme::red());
        p.setFont(tagFont);
        p.setPen(Qt::white);
        p.drawText(box, Qt::AlignCenter, tag);
    }
}

void SceneItemView::enterEvent(QEnterEvent* event) {
    setHovering(true);
    QPushButton::enterEvent(event);
}

void SceneItemView::leaveEvent(QEvent* event) {
    setHovering(false);
    QPushButton::leaveEvent(event);
}

void SceneItemView::resizeEvent(QResizeEvent* event) {
    QPushButton::resizeEvent(event);
    const QSize s = trash_->sizeHint();
    trash_->setGeometry(width() - s.width() - 8, (height() - s.height()) / 2, s.width(), s.height());
}

}  // namespace orvane
