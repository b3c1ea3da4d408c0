#include "console/controls/ScaleFadeEffect.h"

#include <QPainter>
#include <algorithm>

namespace orvane {

ScaleFadeEffect::ScaleFadeEffect(QObject* parent) : QGraphicsEffect(parent) {
    animation_.setDuration(durationMs);
    animation_.setEasingCurve(QEasingCurve::InOutQuad);
    animation_.setStartValue(1.0);
    animation_.setEndValue(1.0);
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(&animation_, &QAbstractAnimation::finished, this, [this] {
        if (target_ == 0) emit gone();
    });
}

double ScaleFadeEffect::progress() const { return animation_.currentValue().toDouble(); }

void ScaleFadeEffect::animateTo(bool shown) {
    const double from = progress();
    target_ = shown ? 1 : 0;
    animation_.stop();
    animation_.setStartValue(from);
    animation_.setEndValue(target_);
    animation_.start();
}

void ScaleFadeEffect::setShown(bool shown) {
    animation_.stop();
    target_ = shown ? 1 : 0;
    animation_.setStartValue(target_);
    animation_.setEndValue(target_);
    // A stopped animation reports its start value; one step makes it current.
    animation_.setCurrentTime(animation_.duration());
    update();
}

void ScaleFadeEffect::draw(QPainter* painter) {
    const double t = std::clamp(progress(), 0.0, 1.0);
    if (t >= 1) {
        drawSource(painter);
        return;
    }
    if (t <= 0) return;
    QPoint offset;
    const QPixmap picture = sourcePixmap(Qt::LogicalCoordinates, &offset, QGraphicsEffect::PadToEffectiveBoundingRect);
    const QRectF bounds(offset, picture.deviceIndependentSize());
    const double scale = std::max(smallestScale, t);
    painter->save();
    painter->setOpacity(painter->opacity() * t);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->translate(bounds.center());
    painter->scale(scale, scale);
    painter->translate(-bounds.center());
    painter->drawPixmap(offset, picture);
    painter->restore();
}

}  // namespace orvane
