#include "console/stages/StagePlaceholders.h"

#include <QPainter>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

namespace {
// A centred column of a symbol and two lines.
void paintColumn(QPainter& p, const QRectF& box, std::string_view symbol, double symbolSize, const QColor& symbolColor,
                 const QString& first, const QFont& firstFont, const QColor& firstColor, const QString& second,
                 const QFont& secondFont, const QColor& secondColor, double spacing) {
    const double h1 = QFontMetricsF(firstFont).height();
    const double h2 = QFontMetricsF(secondFont).height();
    const double total = symbolSize + spacing + h1 + spacing + h2;
    double y = box.center().y() - total / 2;
    p.drawPixmap(QPointF(box.center().x() - symbolSize / 2, y), Symbols::pixmap(symbol, symbolSize, symbolColor));
    y += symbolSize + spacing;
    p.setFont(firstFont);
    p.setPen(firstColor);
    p.drawText(QRectF(box.left(), y, box.width(), h1), Qt::AlignCenter, first);
    y += h1 + spacing;
    p.setFont(secondFont);
    p.setPen(secondColor);
    p.drawText(QRectF(box.left(), y, box.width(), h2), Qt::AlignCenter, second);
}
}  // namespace

void StagePlaceholders::paintProgramInPopOut(QPainter& p, const QRectF& box) {
    p.save();
    p.fillRect(box, Qt::black);
    paintColumn(p, box, "arrow.up.left.and.arrow.down.right", 40, Theme::withAlpha(Theme::gray(), 0.5),
                QStringLiteral("Program in Pop Out Window"), Theme::font(14, Theme::Weight::medium), Theme::white(0.7),
                QStringLiteral("Saving resources"), Theme::font(11), Theme::withAlpha(Theme::gray(), 0.6), 12);
    p.restore();
}

void StagePlaceholders::paintNoProgram(QPainter& p, const QRectF& box) {
    p.save();
    p.fillRect(box, Qt::black);
    paintColumn(p, box, "video.slash", 60, Theme::withAlpha(Theme::gray(), 0.5), QStringLiteral("No Program Active"),
                Theme::font(18, Theme::Weight::medium), Qt::white, QStringLiteral("Virtual Camera Ready"),
                Theme::font(13), Theme::gray(), 16);
    p.restore();
}

}  // namespace orvane
