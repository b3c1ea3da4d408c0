#include "capture/FrameFit.h"

#include <QPainter>
#include <QRegion>

#include <cmath>

namespace orvane {

QImage FrameFit::fit(const QImage& image, const QSize& outputSize) {
    if (image.isNull() || outputSize.isEmpty() || image.size() == outputSize) return image;
    const QSize fitted = image.size().scaled(outputSize, Qt::KeepAspectRatio);
    if (std::abs(fitted.width() - outputSize.width()) <= 1 && std::abs(fitted.height() - outputSize.height()) <= 1)
        return image.scaled(outputSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage canvas(outputSize, QImage::Format_RGB32);
    const QRect target((outputSize.width() - fitted.width()) / 2, (outputSize.height() - fitted.height()) / 2,
                       fitted.width(), fitted.height());
    QPainter painter(&canvas);
    // Only the bars need black; the picture covers the rest.
    const QRegion bars = QRegion(canvas.rect()) - QRegion(target);
    for (const QRect& bar : bars) painter.fillRect(bar, Qt::black);
    if (fitted == image.size()) {
        painter.drawImage(target.topLeft(), image);
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, image);
    }
    return canvas;
}

}  // namespace orvane
