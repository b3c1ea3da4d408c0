#include "composition/BrandingGeometry.h"

#include <algorithm>

namespace orvane {

BrandingMetrics BrandingGeometry::metrics(const BrandingConfig& branding, QSizeF canvas) {
    BrandingMetrics m;
    m.shorterSide = std::min(canvas.width(), canvas.height());
    m.unit = m.shorterSide / 720.0;
    m.logoSize = QSizeF(branding.logoWidth * m.unit, branding.logoHeight * m.unit);
    m.textSize = branding.textSize * m.unit;
    m.gap = 0.012 * m.shorterSide;
    m.padding = branding.showBackground ? 0.012 * m.shorterSide : 0;
    m.cornerRadius = 0.008 * m.shorterSide;
    m.margin = 0.015 * m.shorterSide;
    return m;
}

BrandingLayout BrandingGeometry::layout(const BrandingMetrics& m, BrandingPosition position, QSizeF canvas,
                                        bool hasLogo, QSizeF textSize) {
    const bool hasText = !textSize.isEmpty();
    double contentWidth = 0;
    double contentHeight = 0;
    if (hasLogo) {
        contentWidth += m.logoSize.width();
        contentHeight = std::max(contentHeight, m.logoSize.height());
    }
    if (hasText) {
        if (hasLogo) contentWidth += m.gap;
        contentWidth += textSize.width();
        contentHeight = std::max(contentHeight, textSize.height());
    }
    const QSizeF boxSize(contentWidth + 2 * m.padding, contentHeight + 2 * m.padding);

    const bool left = position == BrandingPosition::topLeft || position == BrandingPosition::bottomLeft;
    const bool top = position == BrandingPosition::topLeft || position == BrandingPosition::topRight;
    const double x = left ? m.margin : canvas.width() - m.margin - boxSize.width();
    const double y = top ? m.margin : canvas.height() - m.margin - boxSize.height();

    BrandingLayout out;
    out.box = QRectF(QPointF(x, y), boxSize);
    const double midY = y + boxSize.height() / 2;
    double cursor = x + m.padding;
    if (hasLogo) {
        out.logo = QRectF(cursor, midY - m.logoSize.height() / 2, m.logoSize.width(), m.logoSize.height());
        cursor += m.logoSize.width() + m.gap;
    }
    if (hasText) out.text = QRectF(cursor, midY - textSize.height() / 2, textSize.width(), textSize.height());
    return out;
}

}  // namespace orvane
