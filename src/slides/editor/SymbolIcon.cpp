#include "slides/editor/SymbolIcon.h"

#include <QPainter>
#include <QPixmap>

#include "paint/SymbolPainter.h"

namespace orvane {

QIcon SymbolIcon::make(std::string_view symbol, const QColor& color, int size) {
    QPixmap picture(size * 2, size * 2);  // sharp on doubled screens too
    picture.setDevicePixelRatio(2);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    SymbolPainter::draw(painter, symbol, QPointF(size / 2.0, size / 2.0), size, color);
    return QIcon(picture);
}

}  // namespace orvane
