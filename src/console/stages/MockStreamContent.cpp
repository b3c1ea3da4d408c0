#include "console/stages/MockStreamContent.h"

#include <QLinearGradient>
#include <QPainter>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

void MockStreamContent::paint(QPainter& p, const QRectF& box) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(box, Theme::mockGround());
    const double w = box.width();
    const double h = box.height();
    const double u = std::min(w, h) / 100.0;  // one unit of the sketch

    // The bar of small rounded shapes at the top.
    const QRectF bar(box.left(), box.top(), w, h * 0.09);
    p.fillRect(bar, Theme::black(0.5));
    p.setPen(Qt::NoPen);
    const QColor dots[] = {Theme::withAlpha(Theme::red(), 0.8), Theme::withAlpha(Theme::orange(), 0.8),
                           Theme::withAlpha(Theme::green(), 0.8)};
    for (int i = 0; i < 3; ++i) {
        p.setBrush(dots[i]);
        p.drawEllipse(QPointF(bar.left() + 3 * u + i * 3.2 * u, bar.center().y()), 1.1 * u, 1.1 * u);
    }
    p.setBrush(Theme::white(0.15));
    p.drawRoundedRect(QRectF(bar.left() + w * 0.3, bar.center().y() - 1.3 * u, w * 0.4, 2.6 * u), u, u);

    // Panels below: an orange one and white ones at low opacity.
    const double top = bar.bottom() + h * 0.05;
    const double panelHeight = h * 0.78;
    p.setBrush(Theme::withAlpha(Theme::orange(), 0.22));
    p.drawRoundedRect(QRectF(box.left() + w * 0.04, top, w * 0.26, panelHeight), 2 * u, 2 * u);
    p.setBrush(Theme::white(0.15));
    p.drawRoundedRect(QRectF(box.left() + w * 0.33, top, w * 0.63, panelHeight * 0.55), 2 * u, 2 * u);
    p.setBrush(Theme::white(0.2));
    p.drawRoundedRect(QRectF(box.left() + w * 0.33, top + panelHeight * 0.6, w * 0.3, panelHeight * 0.4), 2 * u, 2 * u);
    p.setBrush(Theme::white(0.3));
    p.drawRoundedRect(QRectF(box.left() + w * 0.66, top + panelHeight * 0.6, w * 0.3, panelHeight * 0.4), 2 * u, 2 * u);

    // The badge.
    const QFont font = Theme::font(16, Theme::Weight::bold);
    const double textWidth = QFontMetricsF(font).horizontalAdvance(QStringLiteral("Orvanes"));
    const QRectF badge(box.center().x() - (textWidth + 44) / 2, box.center().y() - 18, textWidth + 44, 36);
    QLinearGradient fill(badge.topLeft(), badge.topRight());
    fill.setColorAt(0, Theme::purple());
    fill.setColorAt(1, Theme::pink());
    p.setBrush(fill);
    p.drawRoundedRect(badge, 10, 10);
    p.drawPixmap(QPointF(badge.left() + 10, badge.center().y() - 9), Symbols::pixmap("play.tv", 18, Qt::white));
    p.setPen(Qt::white);
    p.setFont(font);
    p.drawText(QRectF(badge.left() + 32, badge.top(), textWidth + 4, badge.height()), Qt::AlignVCenter | Qt::AlignLeft,
               QStringLiteral("Orvanes"));
    p.restore();
}

}  // namespace orvane
