#include "composition/BackgroundPainter.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

#include "composition/ColorConvert.h"
#include "document/HashCombine.h"

namespace orvane {

namespace {

void spreadStops(QGradient& gradient, const std::vector<CodableColor>& colors) {
    if (colors.size() == 1) {
        gradient.setColorAt(0, ColorConvert::from(colors[0]));
        gradient.setColorAt(1, ColorConvert::from(colors[0]));
        return;
    }
    const double last = static_cast<double>(colors.size() - 1);
    for (std::size_t i = 0; i < colors.size(); ++i) gradient.setColorAt(i / last, ColorConvert::from(colors[i]));
}

}  // namespace

void BackgroundPainter::paintDirect(QPainter& painter, QSizeF canvas, const StreamingScene& scene) {
    const QRectF rect(QPointF(0, 0), canvas);
    if (scene.backgroundType != BackgroundType::gradient || scene.gradientColors.empty()) {
        painter.fillRect(rect, ColorConvert::from(scene.backgroundColor));
        return;
    }
    if (scene.gradientDirection == GradientDirection::radial) {
        QRadialGradient g(rect.center(), 0.7 * std::max(canvas.width(), canvas.height()));
        spreadStops(g, scene.gradientColors);
        painter.fillRect(rect, g);
        return;
    }
    // Start and end are unit points of the canvas, and the gradient is
    // stretched with it: on a wide canvas the diagonal's midline still runs
    // through the two other corners.
    QPointF start;
    QPointF end;
    switch (scene.gradientDirection) {
    case GradientDirection::topToBottom: start = {0.5, 0}, end = {0.5, 1}; break;
    case GradientDirection::bottomToTop: start = {0.5, 1}, end = {0.5, 0}; break;
    case GradientDirection::leftToRight: start = {0, 0.5}, end = {1, 0.5}; break;
    case GradientDirection::rightToLeft: start = {1, 0.5}, end = {0, 0.5}; break;
    case GradientDirection::topLeftToBottomRight: start = {0, 0}, end = {1, 1}; break;
    case GradientDirection::topRightToBottomLeft: start = {1, 0}, end = {0, 1}; break;
    case GradientDirection::radial: break;
    }
    QLinearGradient g(start, end);
    g.setCoordinateMode(QGradient::ObjectMode);
    spreadStops(g, scene.gradientColors);
    painter.fillRect(rect, g);
}

void BackgroundPainter::paint(QPainter& painter, QSizeF canvas, const StreamingScene& scene) {
    if (scene.backgroundType != BackgroundType::gradient || scene.gradientColors.empty()) {
        paintDirect(painter, canvas, scene);
        return;
    }
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    std::size_t key = hashFields(scene.gradientDirection, canvas.width(), canvas.height(), dpr);
    bool opaque = true;
    for (const CodableColor& c : scene.gradientColors) {
        key = hashFields(key, c);
        opaque = opaque && c.alpha >= 1;
    }
    if (key != key_ || cached_.isNull()) {
        key_ = key;
        const QSize pixels = (canvas * dpr).toSize().expandedTo(QSize(1, 1));
        cached_ = QImage(pixels, opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
        cached_.setDevicePixelRatio(dpr);
        cached_.fill(Qt::transparent);
        QPainter p(&cached_);
        paintDirect(p, canvas, scene);
    }
    painter.drawImage(QRectF(QPointF(0, 0), canvas), cached_);
}

}  // namespace orvane
