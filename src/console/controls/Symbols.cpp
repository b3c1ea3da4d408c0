#include "console/controls/Symbols.h"

#include <QGuiApplication>
#include <QPainter>

#include "paint/SymbolPainter.h"

namespace orvane::Symbols {

QPixmap pixmap(std::string_view symbol, double size, const QColor& color) {
    const qreal dpr = qGuiApp ? qGuiApp->devicePixelRatio() : 1.0;
    const int side = std::max(1, static_cast<int>(std::ceil(size)));
    QPixmap pm(QSize(side, side) * dpr);
    pm.setDevicePixelRatio(dpr);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    const QPointF centre(side / 2.0, side / 2.0);
    SymbolPainter::draw(p, symbol, centre, size, color);
    return pm;
}

QIcon icon(std::string_view symbol, double size, const QColor& color) {
    QIcon icon(pixmap(symbol, size, color));
    return icon;
}

}  // namespace orvane::Symbols
