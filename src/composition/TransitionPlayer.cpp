#include "composition/TransitionPlayer.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

void paintPosed(QPainter& painter, QSizeF canvas, const TransitionPose& pose,
                const TransitionPlayer::PaintComposition& paint) {
    if (pose.opacity <= 0 || !paint) return;
    const QPointF centre(canvas.width() / 2, canvas.height() / 2);
    painter.save();
    painter.translate(pose.offset);
    painter.translate(centre);
    painter.scale(pose.scale, pose.scale);
    painter.translate(-centre);
    if (pose.opacity >= 1) {
        paint(painter);
        painter.restore();
        return;
    }
    // Opacity applies to the composition as a whole, so it is drawn into a
    // layer first; otherwise overlapping layers would show through.
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    QImage layer((canvas * dpr).toSize().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    layer.setDevicePixelRatio(dpr);
    layer.fill(Qt::transparent);
    {
        QPainter p(&layer);
        p.setRenderHints(painter.renderHints());
        paint(p);
    }
    painter.setOpacity(painter.opacity() * pose.opacity);
    painter.drawImage(QRectF(QPointF(0, 0), canvas), layer);
    painter.restore();
}

}  // namespace

void TransitionPlayer::start(const TransitionPlan& plan, double now) {
    plan_ = plan;
    startedAt_ = now;
    started_ = true;
}

bool TransitionPlayer::isActive(double now) const {
    return started_ && plan_.animated && plan_.duration > 0 && now - startedAt_ < plan_.duration;
}

double TransitionPlayer::progress(double now) const {
    if (!started_) return 1;
    return TransitionEffect::progress(plan_, now - startedAt_);
}

void TransitionPlayer::paint(QPainter& painter, QSizeF canvas, double now, const PaintComposition& leaving,
                             const PaintComposition& entering) const {
    if (!isActive(now)) {
        if (entering) entering(painter);
        return;
    }
    paintFrame(painter, canvas, plan_.type, progress(now), leaving, entering);
}

void TransitionPlayer::paintFrame(QPainter& painter, QSizeF canvas, TransitionType type, double progress,
                                  const PaintComposition& leaving, const PaintComposition& entering) {
    progress = std::isfinite(progress) ? std::clamp(progress, 0.0, 1.0) : 1.0;
    if (type == TransitionType::none) {
        if (entering) entering(painter);
        return;
    }
    paintPosed(painter, canvas, TransitionEffect::leaving(type, progress, canvas), leaving);
    paintPosed(painter, canvas, TransitionEffect::entering(type, progress, canvas), entering);
}

}  // namespace orvane
