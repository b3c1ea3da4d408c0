#include "paint/SoftShadow.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "paint/FastBlur.h"
#include "paint/ImageBands.h"

namespace orvane {

SoftShadow SoftShadow::make(const QPainterPath& shape, double strokeWidth, double sigma, const QColor& color) {
    SoftShadow out;
    if (shape.isEmpty() || color.alpha() == 0 || !std::isfinite(sigma) || !std::isfinite(strokeWidth)) return out;
    const QRectF box = shape.boundingRect();
    if (!std::isfinite(box.left()) || !std::isfinite(box.top()) || !std::isfinite(box.width()) ||
        !std::isfinite(box.height()) || box.width() > 16384 || box.height() > 16384)
        return out;
    sigma = std::clamp(sigma, 0.0, 1000.0);
    strokeWidth = std::clamp(strokeWidth, 0.0, 1000.0);
    const double spread = 3 * std::max(0.0, sigma) + strokeWidth / 2 + 1;
    // The image starts at a whole canvas point, so that drawing it moves
    // pixels without resampling.
    const QRectF grown = shape.boundingRect().adjusted(-spread, -spread, spread, spread);
    const QPointF origin(std::floor(grown.left()), std::floor(grown.top()));
    const QRectF bounds(origin, grown.bottomRight());
    // Reduce so the blur is about three pixels wide, but keep a hard shadow
    // or a plain outline (sigma near 0) at full resolution.
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
        p.translate(-origin);
        if (strokeWidth > 0) {
            QPen pen(color, strokeWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
            pen.setMiterLimit(10);
            p.setPen(pen);
            p.setBrush(Qt::NoBrush);
        } else {
            p.setPen(Qt::NoPen);
            p.setBrush(color);
        }
        p.drawPath(shape);
    }
    FastBlur::blurInPlace(image, sigma / factor);
    const QSize full(static_cast<int>(std::ceil(size.width() * factor)),
                     static_cast<int>(std::ceil(size.height() * factor)));
    out.image_ = factor > 1 ? image.scaled(full, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : std::move(image);
    // Whole canvas points, so that drawing it moves pixels without resampling.
    out.target_ = QRectF(origin, QSizeF(out.image_.size()));
    return out;
}

SoftShadow SoftShadow::glowingOutline(const QPainterPath& shape, double strokeWidth, double glowSigma,
                                      const QColor& color) {
    SoftShadow out = make(shape, strokeWidth, glowSigma, color);
    if (out.isNull() || glowSigma <= 0) return out;
    QPainter p(&out.image_);
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(-out.target_.topLeft());
    QPen pen(color, strokeWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawPath(shape);
    return out;
}

void SoftShadow::draw(QPainter& painter, QPointF offset) const {
    if (image_.isNull()) return;
    drawImageInBands(painter, target_.topLeft() + offset, image_);
}

void SoftShadow::drawAround(QPainter& painter, QPointF offset, QRectF covered, double corner) const {
    if (image_.isNull()) return;
    // Resampled pieces meet with faint seams; a seam through the rounded
    // corners would show, so under scaling or at fractional positions the
    // covered rectangle stays clear of them.
    const QTransform t = painter.deviceTransform();
    const bool whole = t.type() <= QTransform::TxTranslate && t.dx() == std::floor(t.dx()) &&
                       t.dy() == std::floor(t.dy()) && offset.x() == std::floor(offset.x()) &&
                       offset.y() == std::floor(offset.y());
    if (corner > 0 && !whole) {
        covered.adjust(corner, corner, -corner, -corner);
        corner = 0;
    }
    const QPointF origin = target_.topLeft() + offset;
    // In the image's pixels, shrunk to whole pixels so that nothing uncovered
    // is skipped.
    const QRectF inner = covered.translated(-origin).intersected(QRectF(QPointF(0, 0), QSizeF(image_.size())));
    const int left = static_cast<int>(std::ceil(inner.left()));
    const int top = static_cast<int>(std::ceil(inner.top()));
    const int right = static_cast<int>(std::floor(inner.right()));
    const int bottom = static_cast<int>(std::floor(inner.bottom()));
    if (right <= left || bottom <= top) {
        draw(painter, offset);
        return;
    }
    drawImageAround(painter, origin, image_, image_.rect(), QRect(left, top, right - left, bottom - top));
    if (!(corner > 0)) return;
    // Whole pixels again, rounded outwards.
    const int side = std::min({static_cast<int>(std::ceil(corner)), (right - left) / 2, (bottom - top) / 2});
    if (side <= 0) return;
    const QRect corners[] = {
        QRect(left, top, side, side),
        QRect(right - side, top, side, side),
        QRect(left, bottom - side, side, side),
        QRect(right - side, bottom - side, side, side),
    };
    for (const QRect& s : corners) painter.drawImage(origin + QPointF(s.topLeft()), image_, QRectF(s));
}

}  // namespace orvane
