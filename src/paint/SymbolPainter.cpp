#include "paint/SymbolPainter.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include "paint/SymbolGlyphs.h"

namespace orvane {

namespace {

QString loadedFamily() {
    static const QString family = [] {
        if (!QGuiApplication::instance()) return QString();
        const int id = QFontDatabase::addApplicationFont(QString::fromUtf8(SymbolPainter::kFontPath));
        if (id < 0) return QString();
        const QStringList families = QFontDatabase::applicationFontFamilies(id);
        return families.isEmpty() ? QString() : families.first();
    }();
    return family;
}

void drawFallback(QPainter& painter, std::string_view symbol, QPointF centre, double size, const QColor& color) {
    QPen pen(color, std::max(1.0, size * 0.12), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const double s = size * 0.5;
    if (symbol == "checkmark") {
        QPainterPath path;
        path.moveTo(centre + QPointF(-0.35 * s, 0.0));
        path.lineTo(centre + QPointF(-0.1 * s, 0.3 * s));
        path.lineTo(centre + QPointF(0.4 * s, -0.3 * s));
        painter.drawPath(path);
        return;
    }
    painter.drawRect(QRectF(centre.x() - s * 0.6, centre.y() - s * 0.6, s * 1.2, s * 1.2));
}

}  // namespace

bool SymbolPainter::fontAvailable() { return !loadedFamily().isEmpty(); }

QFont SymbolPainter::font(double pixelSize) {
    QFont f(loadedFamily());
    f.setPixelSize(std::max(1, qRound(pixelSize)));
    f.setStyleStrategy(QFont::NoFontMerging);
    return f;
}

void SymbolPainter::draw(QPainter& painter, std::string_view symbol, QPointF centre, double size,
                         const QColor& color) {
    if (size <= 0) return;
    painter.save();
    const auto glyph = SymbolGlyphs::find(symbol);
    if (!glyph || !fontAvailable()) {
        drawFallback(painter, symbol, centre, size, color);
        painter.restore();
        return;
    }
    // Material glyphs fill their em square, so the em is the symbol's size.
    painter.setFont(font(size));
    painter.setPen(color);
    const char32_t cp = glyph->codepoint;
    const QString text = QString::fromUcs4(&cp, 1);
    painter.drawText(QRectF(centre.x() - size, centre.y() - size, 2 * size, 2 * size), Qt::AlignCenter, text);
    painter.restore();
}

}  // namespace orvane
