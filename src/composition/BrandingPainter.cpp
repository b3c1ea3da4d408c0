#include "composition/BrandingPainter.h"

#include <QFontMetricsF>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "composition/BrandingGeometry.h"
#include "paint/ColorConvert.h"
#include "paint/ImageBands.h"
#include "paint/PixelFont.h"
#include "paint/SoftShadow.h"
#include "document/HashCombine.h"

namespace orvane {

QImage BrandingPainter::logo(const std::string& path) {
    if (path.empty()) return {};
    if (const auto it = logos_.find(path); it != logos_.end()) return it->second;
    QImageReader reader(QString::fromStdString(path));
    reader.setAutoTransform(true);
    QImage image = reader.read();
    // Only loaded logos are kept: a path that fails now is tried again on the
    // next redraw, as the file may still be on its way.
    if (!image.isNull()) {
        if (logos_.size() > 8) logos_.clear();
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        logos_.emplace(path, image);
    }
    return image;
}

QImage BrandingPainter::renderPlate(const BrandingConfig& b, QSizeF canvas, qreal dpr, QRectF* placed) {
    const BrandingMetrics m = BrandingGeometry::metrics(b, canvas);
    const QImage logoImage = b.logoImagePath ? logo(*b.logoImagePath) : QImage();
    const bool hasLogo = !logoImage.isNull() && !m.logoSize.isEmpty();
    const QString text = QString::fromStdString(b.text);
    const QFont font = PixelFont::system(m.textSize, QFont::DemiBold, nullptr);
    QSizeF textSize;
    if (!text.isEmpty()) textSize = PixelFont::metrics(font, nullptr).size(Qt::TextSingleLine, text);
    const BrandingLayout layout = BrandingGeometry::layout(m, b.position, canvas, hasLogo, textSize);
    *placed = layout.box;
    if (layout.box.isEmpty()) return {};

    // Room around the box for the text shadow, out to whole pixels so that
    // the cached plate is copied and not resampled.
    const double bleed = 4;
    const QRectF grown = layout.box.adjusted(-bleed, -bleed, bleed, bleed);
    const QPoint pixelTopLeft(static_cast<int>(std::floor(grown.left() * dpr)),
                              static_cast<int>(std::floor(grown.top() * dpr)));
    const QPoint pixelBottomRight(static_cast<int>(std::ceil(grown.right() * dpr)),
                                  static_cast<int>(std::ceil(grown.bottom() * dpr)));
    const QRectF area(QPointF(pixelTopLeft) / dpr, QSizeF(QSize(pixelBottomRight.x() - pixelTopLeft.x(),
                                                                pixelBottomRight.y() - pixelTopLeft.y())) / dpr);
    QImage image((area.size() * dpr).toSize().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(dpr);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.translate(-area.topLeft());
    if (b.showBackground) {
        p.setPen(Qt::NoPen);
        p.setBrush(ColorConvert::from(b.backgroundColor));
        p.drawRoundedRect(layout.box, m.cornerRadius, m.cornerRadius);
    }
    if (hasLogo) p.drawImage(layout.logo, logoImage);
    if (!text.isEmpty()) {
        // The text's shadow keeps its numbers on every canvas: black at half
        // opacity, radius 2, one point down.
        QPainterPath glyphs;
        glyphs.addText(layout.text.left(), layout.text.top() + PixelFont::metrics(font, nullptr).ascent(), font, text);
        SoftShadow::make(glyphs, 0, 1.0, QColor(0, 0, 0, 128)).draw(p, QPointF(0, 1));
        p.setFont(font);
        p.setPen(ColorConvert::from(b.textColor));
        p.drawText(layout.text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
    }
    // The opacity applies to the plate as a whole: baked in once.
    p.resetTransform();
    p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    p.fillRect(QRectF(QPointF(0, 0), area.size()), QColor::fromRgbF(0, 0, 0, float(std::clamp(b.opacity, 0.0, 1.0))));
    *placed = area;
    return image;
}

void BrandingPainter::paint(QPainter& painter, QSizeF canvas, const BrandingConfig& branding) {
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    const std::size_t key =
        hashFields(branding, canvas.width(), canvas.height(), dpr,
                   branding.logoImagePath ? logo(*branding.logoImagePath).cacheKey() : qint64(0));
    if (key != plateKey_ || plate_.isNull()) {
        plateKey_ = key;
        plate_ = renderPlate(branding, canvas, dpr, &plateRect_);
    }
    if (plate_.isNull()) return;
    drawImageInBands(painter, plateRect_.topLeft(), plate_);
}

}  // namespace orvane
