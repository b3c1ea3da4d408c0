#include "composition/ScreenLayerPainter.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "composition/ColorConvert.h"
#include "composition/FastBlur.h"
#include "composition/ImageAdjust.h"
#include "composition/SourceFrameGeometry.h"
#include "composition/StatusPainter.h"

namespace orvane {

void ScreenLayerPainter::paint(QPainter& painter, QRectF box, const Source& source, const SourceFrame& frame,
                               double blurRadius) {
    if (frame.state != SourceFrame::State::frame || frame.image.isNull()) {
        StatusPainter::paintCaptureState(painter, box, frame, source.type);
        return;
    }
    const SourceConfiguration& c = source.configuration;
    const QRectF r = SourceFrameGeometry::screenFrameRect(box.size(), frame.image.size(), c.scale,
                                                          c.horizontalOffset, c.verticalOffset)
                         .translated(box.topLeft());
    if (r.width() < 0.5 || r.height() < 0.5) return;
    // The corner radius is in canvas points and does not follow the scale.
    const double radius = std::clamp(c.borderRadius, 0.0, std::min(r.width(), r.height()) / 2);
    QPainterPath outline;
    outline.addRoundedRect(r, radius, radius);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);

    if (c.shadowEnabled) {
        // A shadow's radius is twice the Gaussian's standard deviation.
        const QColor color = ColorConvert::from(c.shadowColor);
        const double sigma = std::max(0.0, c.shadowRadius) / 2;
        const QString key = QString::asprintf("%g,%g,%g,%g,%g,%g,%u", r.x(), r.y(), r.width(), r.height(), radius,
                                              sigma, color.rgba());
        if (key != shadowKey_) {
            shadowKey_ = key;
            shadow_ = SoftShadow::make(outline, 0, sigma, color);
        }
        shadow_.draw(painter, QPointF(c.shadowX, c.shadowY));
    }

    const QImage image = ImageAdjust::adjusted(frame.image, c.brightness - 1, 1);
    painter.save();
    if (radius > 0)
        painter.setClipPath(outline, Qt::IntersectClip);
    else
        painter.setClipRect(r, Qt::IntersectClip);
    const QImage blurred = blurRadius > 0 ? FastBlur::blur(image, r.size(), blurRadius) : QImage();
    painter.drawImage(r, blurred.isNull() ? image : blurred);
    painter.restore();

    if (c.borderEnabled) {
        const QColor color = ColorConvert::from(c.borderColor);
        if (c.borderGlow > 0) {
            const double sigma = c.borderGlow / 2;
            const QString key = QString::asprintf("%g,%g,%g,%g,%g,%g,%g,%u", r.x(), r.y(), r.width(), r.height(),
                                                  radius, c.borderWidth, sigma, color.rgba());
            if (key != glowKey_) {
                glowKey_ = key;
                glow_ = SoftShadow::make(outline, std::max(0.5, c.borderWidth), sigma, color);
            }
            glow_.draw(painter);
        }
        if (c.borderWidth > 0) {
            QPen pen(color, c.borderWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
            pen.setMiterLimit(10);
            painter.setPen(pen);
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(outline);
        }
    }
    painter.restore();
}

}  // namespace orvane
