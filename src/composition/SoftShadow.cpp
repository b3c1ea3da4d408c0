#include "composition/SoftShadow.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "composition/FastBlur.h"

namespace orvane {

SoftShadow SoftShadow::make(const QPainterPath& shape, double strokeWidth, double sigma, const QColor& color) {
    SoftShadow out;
    if (shape.isEmpty() || color.alpha() == 0) return out;
    const double spread = 3 * std::max(0.0, sigma) + strokeWidth / 2 + 1;
    const QRectF bounds = shape.boundingRect().adjusted(-spread, -spread, spread, spread);
    // Reduce so the blur is about three pixels wide, but keep a hard shadow
    // (sigma near 0) at full resolution.
    const double factor = sigma < 1 ? 1.0 : std::clamp(sigma / 3.0, 1.0, 8.0);
    const QSize size(std::max(1, static_cast<int>(std::ceil(bounds.width() / factor))),
                     std::max(1, static_cast<int>(std::ceil(bounds.height() / factor))));
    if (static_cast<qint64>(size.width()) * size.height() > 4096LL * 4096LL) return out;
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(1 / factor, 1 / factor);
        p.translate(-bounds.topLeft());
        if (strokeWidth > 0) {
            p.setPen(QPen(color, strokeWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
            p.setBrush(Qt::NoBrush);
        } else {
            p.setPen(Qt::NoPen);
            p.setBrush(color);
        }
        p.drawPath(shape);
    }
    FastBlur::blurInPlace(image, sigma / factor);
    out.image_ = std::move(image);
    out.target_ = QRectF(bounds.topLeft(), QSizeF(size.width() * factor, size.height() * factor));
    return out;
}

void SoftShadow::draw(QPainter& painter, QPointF offset) const {
    if (image_.isNull()) return;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target_.translated(offset), image_);
    painter.restore();
}

}  // namespace orvane
