#include "console/Symbols.h"

#include <QGuiApplication>
#include <QPainter>

#include "composition/SymbolGlyphs.h"
#include "composition/SymbolPainter.h"

namespace orvane::Symbols {

namespace {

// Console symbols missing from the shared table, as Material Icons code points.
std::optional<char32_t> consoleGlyph(std::string_view symbol) {
    if (symbol == "xmark") return 0xe5cd;       // close
    if (symbol == "textformat") return 0xe262;  // text_fields
    return std::nullopt;
}

}  // namespace

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
    if (!SymbolGlyphs::find(symbol) && SymbolPainter::fontAvailable()) {
        if (auto cp = consoleGlyph(symbol)) {
            p.setFont(SymbolPainter::font(size));
            p.setPen(color);
            p.drawText(QRectF(0, 0, side, side), Qt::AlignCenter, QString::fromUcs4(&*cp, 1));
            return pm;
        }
    }
    SymbolPainter::draw(p, symbol, centre, size, color);
    return pm;
}

QIcon icon(std::string_view symbol, double size, const QColor& color) {
    QIcon icon(pixmap(symbol, size, color));
    return icon;
}

}  // namespace orvane::Symbols
