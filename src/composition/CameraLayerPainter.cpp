#include "composition/CameraLayerPainter.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "composition/CameraMask.h"
#include "paint/ColorConvert.h"
#include "composition/ImageAdjust.h"
#include "composition/SourceFrameGeometry.h"
#include "composition/StatusPainter.h"

namespace orvane {

CameraBox CameraLayerPainter::boxFor(const SourceConfiguration& config, SceneLayout layout, QRectF cameraFrame,
                                     QSizeF canvas) {
    if (SceneLayoutHelper::isPipLayout(layout))
        return SceneLayoutHelper::calculateCameraTransformPIP(config, cameraFrame, canvas);
    return SceneLayoutHelper::calculateCameraTransform(config, layout, cameraFrame);
}

FrameScaler::Outline CameraLayerPainter::outline(const CameraBox& box, CameraShape shape, double cornerRadius) {
    const QRectF r = box.rect();
    if (shape == CameraShape::circle) {
        // A circle in a box that is not square takes the shorter side.
        const double d = std::min(r.width(), r.height());
        return {QRectF(r.center().x() - d / 2, r.center().y() - d / 2, d, d), d / 2};
    }
    const double radius =
        std::isfinite(cornerRadius) ? std::clamp(cornerRadius, 0.0, std::min(r.width(), r.height()) / 2) : 0.0;
    return {r, radius};
}

QPainterPath CameraLayerPainter::clipPath(const CameraBox& box, CameraShape shape, double cornerRadius) {
    QPainterPath path;
    const FrameScaler::Outline o = outline(box, shape, cornerRadius);
    if (shape == CameraShape::circle)
        path.addEllipse(o.rect);
    else
        path.addRoundedRect(o.rect, o.radius, o.radius);
    return path;
}

void CameraLayerPainter::paintBox(QPainter& painter, const CameraBox& box, CameraShape shape,
                                  const SourceConfiguration& config, const SourceFrame& frame) {
    const QRectF r = box.rect();
    if (frame.state == SourceFrame::State::frame && !frame.image.isNull()) {
        const QImage image = ImageAdjust::adjusted(frame.image, config.cameraBrightness, config.cameraContrast);
        const double cameraZoom = std::isfinite(config.cameraZoom) ? std::clamp(config.cameraZoom, 0.01, 100.0) : 1.0;
        const QRectF zoomed = SourceFrameGeometry::cameraZoomRect(r.size(), cameraZoom)
                                  .translated(r.topLeft());
        const QRectF source = SourceFrameGeometry::aspectFillSource(image.size(), zoomed.size());
        scaler_.drawWithin(painter, outline(box, shape, config.cameraBorderRadius), zoomed, image, source);
    } else {
        painter.save();
        painter.setClipPath(clipPath(box, shape, config.cameraBorderRadius), Qt::IntersectClip);
        painter.fillRect(r, Qt::black);
        // A camera that is gone says so on its black box; one not yet
        // started, or with nothing asked of it, stays plain black.
        if (frame.state == SourceFrame::State::failed)
            StatusPainter::paintCaptureState(painter, r, frame, SourceType::camera, 0);
        painter.restore();
    }

    if (!config.cameraBorderEnabled || !(config.cameraBorderWidth > 0)) return;
    const QColor color = ColorConvert::from(config.cameraBorderColor);
    // The outline with its glow (a shadow of the outline in the same colour
    // whose radius is half the glow value; a shadow radius is twice the
    // Gaussian's deviation), cached as one image.
    const double sigma = std::max(0.0, config.cameraBorderGlow) * 0.5 / 2;
    const double width = config.cameraBorderWidth;
    const QString key = QString::asprintf("%g,%g,%g,%g,%d,%g,%g,%g,%u", r.x(), r.y(), r.width(), r.height(),
                                          int(shape), config.cameraBorderRadius, width, sigma, color.rgba());
    if (key != borderKey_) {
        borderKey_ = key;
        border_ = SoftShadow::glowingOutline(clipPath(box, shape, config.cameraBorderRadius), width, sigma, color);
    }
    // Only the band around the outline holds anything: leave out the inside.
    const double reach = width / 2 + 3 * sigma + 2;
    QRectF inside;
    if (shape == CameraShape::circle) {
        const double half = (std::min(r.width(), r.height()) / 2 - reach) / std::sqrt(2.0);
        if (half > 0) inside = QRectF(r.center().x() - half, r.center().y() - half, 2 * half, 2 * half);
    } else {
        const double inset = std::clamp(config.cameraBorderRadius, 0.0, std::min(r.width(), r.height()) / 2) + reach;
        inside = r.adjusted(inset, inset, -inset, -inset);
    }
    border_.drawAround(painter, {}, inside.isValid() ? inside : QRectF());
}

void CameraLayerPainter::paint(QPainter& painter, QSizeF canvas, SceneLayout layout, QRectF cameraFrame,
                               const Source& camera, const SourceFrame& frame, double zoom) {
    const SourceConfiguration& config = camera.configuration;
    const CameraBox box = boxFor(config, layout, cameraFrame, canvas);
    const QRectF placed = box.rect();
    if (!(box.size.width() > 0 && box.size.height() > 0) || !std::isfinite(placed.left()) ||
        !std::isfinite(placed.top()) || !std::isfinite(placed.width()) || !std::isfinite(placed.height()) ||
        !std::isfinite(zoom) || placed.width() > 100000 || placed.height() > 100000)
        return;
    const CameraShape shape = SceneLayoutHelper::cameraShapeForLayout(config.cameraShape, layout);
    const QPointF centre(canvas.width() / 2, canvas.height() / 2);

    const auto stops = CameraMask::stops(layout);
    if (!stops) {
        painter.save();
        painter.translate(centre);
        painter.scale(zoom, zoom);
        painter.translate(-centre);
        paintBox(painter, box, shape, config, frame);
        painter.restore();
        return;
    }

    // The mask spans the whole canvas, so the layer is drawn off-screen at
    // canvas size, masked, then put in place.
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    const QSize pixels((canvas * dpr).toSize());
    if (pixels.isEmpty()) return;
    if (layer_.size() != pixels) layer_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    layer_.setDevicePixelRatio(dpr);
    layer_.fill(Qt::transparent);
    {
        QPainter p(&layer_);
        p.setRenderHints(painter.renderHints());
        p.translate(centre);
        p.scale(zoom, zoom);
        p.translate(-centre);
        paintBox(p, box, shape, config, frame);
        p.resetTransform();
        QLinearGradient mask(0, 0, canvas.width(), 0);
        for (int i = 0; i < 8; ++i)
            mask.setColorAt(CameraMask::stopPosition(i), QColor::fromRgbF(0, 0, 0, static_cast<float>((*stops)[i])));
        p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        p.fillRect(QRectF(QPointF(0, 0), canvas), mask);
    }
    painter.drawImage(QRectF(QPointF(0, 0), canvas), layer_);
}

}  // namespace orvane
