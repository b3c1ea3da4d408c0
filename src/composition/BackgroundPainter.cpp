#include "composition/BackgroundPainter.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

#include "paint/ColorConvert.h"
#include "paint/ImageBands.h"
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

void BackgroundPainter::paint(QPainter& painter, QSizeF canvas, const StreamingScene& scene, QRect covered,
                              const SoftShadow* shadow, QPointF shadowOffset) {
    const bool gradient = scene.backgroundType == BackgroundType::gradient && !scene.gradientColors.empty();
    if (shadow && shadow->isNull()) shadow = nullptr;
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    // The parts of the canvas around `covered`: above, below, left, right.
    const QRect all = QRectF(QPointF(0, 0), canvas).toAlignedRect();
    QRect strips[4] = {all, {}, {}, {}};
    const QRect hole = covered.intersected(all);
    if (!hole.isEmpty() && dpr == 1.0) {
        strips[0] = QRect(all.left(), all.top(), all.width(), hole.top() - all.top());
        strips[1] = QRect(all.left(), hole.bottom() + 1, all.width(), all.bottom() - hole.bottom());
        strips[2] = QRect(all.left(), hole.top(), hole.left() - all.left(), hole.height());
        strips[3] = QRect(hole.right() + 1, hole.top(), all.right() - hole.right(), hole.height());
    }
    if (!gradient && !shadow) {
        if (strips[1].isNull()) {
            paintDirect(painter, canvas, scene);
            return;
        }
        for (const QRect& r : strips)
            if (!r.isEmpty()) painter.fillRect(r, ColorConvert::from(scene.backgroundColor));
        return;
    }
    std::size_t key = hashFields(scene.backgroundType, scene.backgroundColor, scene.gradientDirection, canvas.width(),
                                 canvas.height(), dpr);
    bool opaque = gradient || scene.backgroundColor.alpha >= 1;
    if (gradient) {
        for (const CodableColor& c : scene.gradientColors) {
            key = hashFields(key, c);
            opaque = opaque && c.alpha >= 1;
        }
    }
    if (shadow) key = hashFields(key, shadow->cacheKey(), shadowOffset.x(), shadowOffset.y());
    if (key != key_ || cached_.isNull()) {
        key_ = key;
        const QSize pixels = (canvas * dpr).toSize().expandedTo(QSize(1, 1));
        cached_ = QImage(pixels, opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
        cached_.setDevicePixelRatio(dpr);
        cached_.fill(Qt::transparent);
        QPainter p(&cached_);
        paintDirect(p, canvas, scene);
        if (shadow) shadow->draw(p, shadowOffset);
    }
    if (strips[1].isNull()) {
        painter.drawImage(QRectF(QPointF(0, 0), canvas), cached_);
        return;
    }
    drawImageAround(painter, QPointF(0, 0), cached_, all, hole);
}

}  // namespace orvane
