#include "console/sheets/CaptureTile.h"

#include <QPainter>
#include <QPainterPath>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

CaptureTile::CaptureTile(const QString& title, const QString& detail, const Look& look, QWidget* parent)
    : QPushButton(title, parent), detail_(detail), look_(look) {
    setAccessibleName(title);
    setAccessibleDescription(detail);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CaptureTile::setBadge(const QString& badge) {
    badge_ = badge;
    update();
}

void CaptureTile::setSelected(bool selected) {
    selected_ = selected;
    update();
}

void CaptureTile::setThumbnail(const QImage& image) {
    thumbnail_ = image;
    update();
}

QSize CaptureTile::sizeHint() const {
    const int boxHeight = look_.thumbnailSize.isEmpty() ? 28 : look_.thumbnailSize.height();
    return {look_.thumbnailSize.width() + 200, boxHeight + 20};
}

void CaptureTile::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    QPainterPath ground;
    ground.addRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 10, 10);
    p.fillPath(ground, selected_ ? Theme::withAlpha(Theme::purple(), 0.2) : Theme::white(underMouse() ? 0.08 : 0.05));
    if (selected_) {
        p.setPen(QPen(Theme::purple(), 2));
        p.drawPath(ground);
    }

    double textLeft = 14;
    if (!look_.thumbnailSize.isEmpty()) {
        const QRectF box(10, (height() - look_.thumbnailSize.height()) / 2.0, look_.thumbnailSize.width(),
                         look_.thumbnailSize.height());
        QPainterPath clip;
        clip.addRoundedRect(box, look_.cornerRadius, look_.cornerRadius);
        p.fillPath(clip, Theme::white(0.1));
        if (!thumbnail_.isNull()) {
            p.save();
            p.setClipPath(clip);
            const QSizeF fitted = QSizeF(thumbnail_.size()).scaled(box.size(), Qt::KeepAspectRatio);
            p.drawImage(QRectF(box.center() - QPointF(fitted.width() / 2, fitted.height() / 2), fitted), thumbnail_);
            p.restore();
        }
        textLeft = box.right() + 12;
    } else if (!look_.symbol.empty()) {
        p.drawPixmap(QPointF(14, (height() - 16) / 2.0), Symbols::pixmap(look_.symbol, 16, Theme::purple()));
        textLeft = 40;
    }
    const double right = width() - (selected_ ? 40 : 12);
    const double mid = height() / 2.0;
    p.setPen(Qt::white);
    p.setFont(Theme::font(12, Theme::Weight::medium));
    p.drawText(QRectF(textLeft, mid - 20, right - textLeft, 18), Qt::AlignLeft | Qt::AlignVCenter,
               QFontMetricsF(p.font()).elidedText(text(), Qt::ElideRight, right - textLeft));
    double detailLeft = textLeft;
    if (!look_.detailSymbol.empty()) {
        p.drawPixmap(QPointF(textLeft, mid + 3), Symbols::pixmap(look_.detailSymbol, 11, Theme::gray()));
        detailLeft += 15;
    }
    p.setPen(Theme::gray());
    p.setFont(Theme::font(10));
    p.drawText(QRectF(detailLeft, mid, right - detailLeft, 16), Qt::AlignLeft | Qt::AlignVCenter, detail_);
    if (!badge_.isEmpty()) {
        p.setFont(Theme::font(9, Theme::Weight::bold));
        const double w = QFontMetricsF(p.font()).horizontalAdvance(badge_) + 10;
        const QRectF pill(textLeft, mid + 18, w, 14);
        p.setPen(Qt::NoPen);
        p.setBrush(Theme::withAlpha(Theme::purple(), 0.2));
        p.drawRoundedRect(pill, 4, 4);
        p.setPen(Theme::purple());
        p.drawText(pill, Qt::AlignCenter, badge_);
    }
    if (selected_)
        p.drawPixmap(QPointF(width() - 34, mid - 12), Symbols::pixmap("checkmark.circle.fill", 24, Theme::purple()));
}

}  // namespace orvane
