#include "console/controls/SelectableTile.h"

#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

SelectableTile::SelectableTile(const QString& name, std::string symbol, bool showCaption, QWidget* parent)
    : QPushButton(parent), symbol_(std::move(symbol)), showCaption_(showCaption) {
    setText(showCaption ? name : QString());
    setAccessibleName(name);
    setToolTip(name);
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);  // repaint as the pointer comes and goes
    // The owner decides what is current: a press only reports the choice.
    connect(this, &QAbstractButton::toggled, this, [this](bool on) {
        if (on) {
            emit chosen();
            return;
        }
        setCurrent(true);
    });
}

void SelectableTile::setCurrent(bool current) {
    const QSignalBlocker quiet(this);
    setChecked(current);
    update();
}

QSize SelectableTile::sizeHint() const { return {48, showCaption_ ? 46 : 32}; }

void SelectableTile::paintFigure(QPainter& painter, const QRectF& area) {
    const double size = 14;
    const QColor tint = isCurrent() ? Theme::purple() : Theme::white(0.8);
    painter.drawPixmap(QPointF(area.center().x() - size / 2, area.center().y() - size / 2),
                       Symbols::pixmap(symbol_, size, tint));
}

void SelectableTile::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
    QPainterPath path;
    path.addRoundedRect(r, 6, 6);
    if (isCurrent()) {
        p.fillPath(path, Theme::withAlpha(Theme::purple(), 0.15));
        p.setPen(QPen(Theme::purple(), 1.2));
        p.drawPath(path);
    } else {
        p.fillPath(path, underMouse() ? Theme::white(0.09) : Theme::white(0.05));
    }
    if (hasFocus()) {
        p.setPen(QPen(Theme::white(0.5), 1, Qt::DotLine));
        p.drawRoundedRect(r.adjusted(2, 2, -2, -2), 5, 5);
    }
    const QRectF figure = showCaption_ ? QRectF(r.left(), r.top() + 3, r.width(), r.height() - 18) : r;
    paintFigure(p, figure);
    if (showCaption_) {
        p.setPen(isCurrent() ? Qt::white : Theme::white(0.75));
        p.setFont(Theme::font(9, Theme::Weight::medium));
        p.drawText(QRectF(r.left() + 2, r.bottom() - 17, r.width() - 4, 14), Qt::AlignCenter,
                   QFontMetricsF(p.font()).elidedText(text(), Qt::ElideRight, r.width() - 4));
    }
}

}  // namespace orvane
