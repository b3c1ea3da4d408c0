#include "composition/ImageBands.h"

#include <QPainter>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace orvane {

void drawImageInBands(QPainter& painter, QPointF at, const QImage& image, QRect source) {
    source &= image.rect();
    if (source.isEmpty()) return;
    const QTransform t = painter.deviceTransform();
    const QPointF device = t.map(at);
    const bool onGrid = image.devicePixelRatio() == 1 && t.type() <= QTransform::TxTranslate && device.x() == std::floor(device.x()) &&
                        device.y() == std::floor(device.y());
    if (!onGrid || source.height() <= kImageBandRows) {
        painter.drawImage(at, image, QRectF(source));
        return;
    }
    for (int top = source.top(); top <= source.bottom(); top += kImageBandRows) {
        const int rows = std::min(kImageBandRows, source.bottom() + 1 - top);
        painter.drawImage(QPointF(at.x(), at.y() + (top - source.top())), image,
                          QRectF(source.left(), top, source.width(), rows));
    }
}

}  // namespace orvane
