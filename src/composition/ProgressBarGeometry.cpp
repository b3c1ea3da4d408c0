#include "composition/ProgressBarGeometry.h"

#include <algorithm>

namespace orvane {

ProgressStripMetrics ProgressBarGeometry::metrics(const ProgressBarConfig& config, QSizeF canvas) {
    const double w = canvas.width();
    const double h = canvas.height();
    ProgressStripMetrics out;
    out.horizontal = config.orientation == ProgressBarOrientation::horizontal;
    out.shorterSide = std::min(w, h);
    const double m = out.shorterSide;
    if (out.horizontal) {
        out.thickness = h * config.size / 720.0;
        out.paddingAlong = 0.015 * w;
        const double y = config.position == ProgressBarPosition::top ? 0 : h - out.thickness;
        out.strip = QRectF(0, y, w, out.thickness);
        out.itemPadding = 0.01 * w;
        out.connector = QSizeF(0.03 * m, 0.003 * m);
    } else {
        out.thickness = w * config.size / 1280.0;
        out.paddingAlong = 0.015 * h;
        const double x = config.position == ProgressBarPosition::left ? 0 : w - out.thickness;
        out.strip = QRectF(x, 0, out.thickness, h);
        out.itemPadding = 0.015 * h;
        out.connector = QSizeF(0.003 * m, 0.03 * m);
        // The configured size is used as it stands here, not scaled.
        out.labelMaxWidth = std::max(0.0, config.size - 0.015 * w);
    }
    out.markerDiameter = 0.025 * m;
    out.checkSize = 0.5 * out.markerDiameter;
    out.numberSize = 0.42 * out.markerDiameter;
    out.labelSize = config.textSize * m / 1000.0;
    out.gap = 0.008 * m;
    return out;
}

ProgressItemPlacement ProgressBarGeometry::placeItem(const ProgressStripMetrics& m, double start, QSizeF labelSize,
                                                     bool hasConnector) {
    ProgressItemPlacement p;
    const double d = m.markerDiameter;
    if (m.horizontal) {
        const double mid = m.strip.center().y();
        double x = start + m.itemPadding;
        p.marker = QRectF(x, mid - d / 2, d, d);
        x += d + m.gap;
        p.label = QRectF(x, mid - labelSize.height() / 2, labelSize.width(), labelSize.height());
        x += labelSize.width() + m.itemPadding;
        if (hasConnector) {
            p.connector = QRectF(x, mid - m.connector.height() / 2, m.connector.width(), m.connector.height());
            x += m.connector.width();
        }
        p.next = x;
    } else {
        const double mid = m.strip.center().x();
        double y = start + m.itemPadding;
        p.marker = QRectF(mid - d / 2, y, d, d);
        y += d + m.gap;
        p.label = QRectF(mid - labelSize.width() / 2, y, labelSize.width(), labelSize.height());
        y += labelSize.height() + m.itemPadding;
        if (hasConnector) {
            p.connector = QRectF(mid - m.connector.width() / 2, y, m.connector.width(), m.connector.height());
            y += m.connector.height();
        }
        p.next = y;
    }
    return p;
}

}  // namespace orvane
