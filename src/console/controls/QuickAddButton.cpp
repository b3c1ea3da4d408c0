#include "console/controls/QuickAddButton.h"

#include <QPainter>
#include <QPainterPath>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

QuickAddButton::QuickAddButton(const QString& title, const QString& subtitle, std::string symbol, QWidget* parent)
    : QPushButton(title, parent), subtitle_(subtitle), symbol_(std::move(symbol)) {
    setAccessibleName(title);
    setAccessibleDescription(subtitle);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize QuickAddButton::sizeHint() const { return {200, 44}; }

void QuickAddButton::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const bool hovered = underMouse();
    QPainterPath path;
    path.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
    p.fillPath(path, hovered ? Theme::withAlpha(Theme::purple(), 0.15) : Theme::white(0.05));
    p.setPen(QPen(hovered ? Theme::withAlpha(Theme::purple(), 0.5) : Theme::white(0.08), 1));
    p.drawPath(path);
    p.drawPixmap(QPointF(12, (height() - 16) / 2.0), Symbols::pixmap(symbol_, 16, Theme::purple()));
    const double left = 40;
    const double right = width() - (hovered ? 34 : 10);
    p.setPen(Qt::white);
    p.setFont(Theme::font(11, Theme::Weight::medium));
    p.drawText(QRectF(left, 5, right - left, 18), Qt::AlignLeft | Qt::AlignVCenter, text());
    p.setPen(Theme::gray());
    p.setFont(Theme::font(9));
    p.drawText(QRectF(left, 22, right - left, 16), Qt::AlignLeft | Qt::AlignVCenter, subtitle_);
    if (hovered)
        p.drawPixmap(QPointF(width() - 26, (height() - 16) / 2.0), Symbols::pixmap("plus.circle.fill", 16, Theme::purple()));
}

}  // namespace orvane
