#include "composition/ScreenLayerPainter.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "paint/ColorConvert.h"
#include "paint/FastBlur.h"
#include "composition/ImageAdjust.h"
#include "composition/SourceFrameGeometry.h"
#include "composition/StatusPainter.h"

namespace orvane {

namespace {

// A frame scaled beyond this many points shows a few of its pixels at best;
// such sizes only come from damaged documents and are not drawn.
constexpr double kMaxExtent = 100000;

}  // namespace

QRectF ScreenLayerPainter::opaqueRect(QRectF box, const Source& source, const SourceFrame& frame, double blurRadius) {
    if (frame.state != SourceFrame::State::frame || frame.image.isNull()) return {};
    const SourceConfiguration& c = source.configuration;
    const QRectF r = SourceFrameGeometry::screenFrameRect(box.size(), frame.image.size(), c.scale,
                                                          c.horizontalOffset, c.verticalOffset)
                         .translated(box.topLeft());
    if (!std::isfinite(r.left()) || !std::isfinite(r.top()) || !std::isfinite(r.width()) || !std::isfinite(r.height()))
        return {};
    const double radius = std::isfinite(c.borderRadius)
                              ? std::clamp(c.borderRadius, 0.0, std::min(r.width(), r.height()) / 2)
                              : 0.0;
    const double inset = radius + 3 * std::max(0.0, blurRadius) + 1;
    const QRectF inner = r.adjusted(inset, inset, -inset, -inset);
    return inner.isValid() ? inner : QRectF();
}

bool ScreenLayerPainter::place(QRectF box, const Source& source, const SourceFrame& frame, QRectF* rect,
                               double* radius) {
    if (frame.state != SourceFrame::State::frame || frame.image.isNull()) return false;
    const SourceConfiguration& c = source.configuration;
    const QRectF r = SourceFrameGeometry::screenFrameRect(box.size(), frame.image.size(), c.scale,
                                                          c.horizontalOffset, c.verticalOffset)
                         .translated(box.topLeft());
    if (!(r.width() >= 0.5 && r.height() >= 0.5) || !std::isfinite(r.left()) || !std::isfinite(r.top()) ||
        !std::isfinite(r.width()) || !std::isfinite(r.height()) || r.width() > kMaxExtent || r.height() > kMaxExtent)
        return false;
    *rect = r;
    // The corner radius is in canvas points and does not follow the scale.
    *radius = std::isfinite(c.borderRadius) ? std::clamp(c.borderRadius, 0.0, std::min(r.width(), r.height()) / 2)
                                            : 0.0;
    return true;
}

const SoftShadow* ScreenLayerPainter::shadowFor(QRectF r, double radius, const SourceConfiguration& c) {
    if (!c.shadowEnabled) return nullptr;
    // A shadow's radius is twice the Gaussian's standard deviation.
    const QColor color = ColorConvert::from(c.shadowColor);
    const double sigma = std::max(0.0, c.shadowRadius) / 2;
    const QString key = QString::asprintf("%g,%g,%g,%g,%g,%g,%u", r.x(), r.y(), r.width(), r.height(), radius, sigma,
                                          color.rgba());
    if (key != shadowKey_) {
        shadowKey_ = key;
        QPainterPath outline;
        outline.addRoundedRect(r, radius, radius);
        shadow_ = SoftShadow::make(outline, 0, sigma, color);
    }
    return shadow_.isNull() ? nullptr : &shadow_;
}

const SoftShadow* ScreenLayerPainter::shadow(QRectF box, const Source& source, const SourceFrame& frame,
                                             QPointF* offset) {
    QRectF r;
    double radius = 0;
    if (!place(box, source, frame, &r, &radius)) return nullptr;
    *offset = QPointF(source.configuration.shadowX, source.configuration.shadowY);
    return shadowFor(r, radius, source.configuration);
}

void ScreenLayerPainter::paint(QPainter& painter, QRectF box, const Source& source, const SourceFrame& frame,
                               double blurRadius, bool shadowDrawn, double now) {
    if (frame.state != SourceFrame::State::frame || frame.image.isNull()) {
        StatusPainter::paintCaptureState(painter, box, frame, source.type, now);
        return;
    }
    const SourceConfiguration& c = source.configuration;
    QRectF r;
    double radius = 0;
    if (!place(box, source, frame, &r, &radius)) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);

    if (!shadowDrawn) {
        if (const SoftShadow* shadow = shadowFor(r, radius, c)) {
            // Captured frames are opaque: under the frame's inside, away from
            // its rounded corners and its blurred edge, the shadow cannot show.
            const double inset = radius + 3 * blurRadius + 1;
            shadow->drawAround(painter, QPointF(c.shadowX, c.shadowY), r.adjusted(inset, inset, -inset, -inset));
        }
    }

    const QImage image = ImageAdjust::adjusted(frame.image, c.brightness - 1, 1);
    const FastBlur::Blurred blurred =
        blurRadius > 0 ? FastBlur::blur(image, r.size(), blurRadius) : FastBlur::Blurred{};
    if (blurred.isNull())
        scaler_.drawWithin(painter, {r, radius}, r, image);
    else
        scaler_.drawWithin(painter, {r, radius}, blurred.target(r), blurred.image);

    if (c.borderEnabled && c.borderWidth > 0) {
        // The outline and its glow (a shadow of the outline in the same
        // colour, radius borderGlow) are one cached image.
        const QColor color = ColorConvert::from(c.borderColor);
        const double sigma = std::max(0.0, c.borderGlow) / 2;
        const QString key = QString::asprintf("%g,%g,%g,%g,%g,%g,%g,%u", r.x(), r.y(), r.width(), r.height(), radius,
                                              c.borderWidth, sigma, color.rgba());
        if (key != borderKey_) {
            borderKey_ = key;
            QPainterPath outline;
            outline.addRoundedRect(r, radius, radius);
            border_ = SoftShadow::glowingOutline(outline, c.borderWidth, sigma, color);
        }
        // Along the straight edges the glow reaches as far in as it does out;
        // at the corners the outline itself bends in by the radius.
        const double inset = c.borderWidth / 2 + 3 * sigma + 2;
        border_.drawAround(painter, {}, r.adjusted(inset, inset, -inset, -inset), radius);
    }
    painter.restore();
}

}  // namespace orvane
