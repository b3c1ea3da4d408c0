#include "console/sidebar/SidebarTabButton.h"

#include <QPainter>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

SidebarTabButton::SidebarTabButton(ConfigTab tab, bool compact, QWidget* parent)
    : QPushButton(compact ? QString() : configTabTitle(tab), parent), tab_(tab), compact_(compact) {
    setAccessibleName(configTabTitle(tab));
    setToolTip(configTabTitle(tab));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    if (compact)
        setFixedSize(50, 60);
    else
        setFixedHeight(46);
}

void SidebarTabButton::setSelected(bool selected) {
    if (selected_ == selected) return;
    selected_ = selected;
    update();
}

void SidebarTabButton::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    if (underMouse() && !selected_) p.fillRect(rect(), Theme::white(0.04));
    if (selected_) p.fillRect(rect(), Theme::withAlpha(Theme::purple(), 0.1));
    const QColor tint = selected_ ? Theme::purple() : Theme::white(0.6);
    const double symbol = compact_ ? 18 : 14;
    const double top = compact_ ? (height() - symbol) / 2.0 : 7;
    p.drawPixmap(QPointF((width() - symbol) / 2.0, top), Symbols::pixmap(configTabSymbol(tab_), symbol, tint));
    if (!compact_) {
        p.setPen(selected_ ? Qt::white : Theme::white(0.6));
        p.setFont(Theme::font(10, selected_ ? Theme::Weight::semibold : Theme::Weight::regular));
        p.drawText(QRectF(0, top + symbol + 2, width(), 16), Qt::AlignHCenter | Qt::AlignTop, text());
    }
    if (selected_) {
        if (compact_)
            p.fillRect(QRectF(0, 8, 2, height() - 16), Theme::purple());
        else
            p.fillRect(QRectF(6, height() - 2, width() - 12, 2), Theme::purple());
    }
}

}  // namespace orvane
