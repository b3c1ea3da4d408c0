#include "console/stages/UpdateLiveButton.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
constexpr int kShadowRoom = 10;  // space around the button for its shadow and scale

double lerp(double from, double to, double t) { return from + (to - from) * t; }

QColor blend(const QColor& from, const QColor& to, double t) {
    return QColor::fromRgbF(float(lerp(from.redF(), to.redF(), t)), float(lerp(from.greenF(), to.greenF(), t)),
                            float(lerp(from.blueF(), to.blueF(), t)), float(lerp(from.alphaF(), to.alphaF(), t)));
}
}  // namespace

UpdateLiveButton::UpdateLiveButton(StreamManager& streamManager, QWidget* parent)
    : QAbstractButton(parent), streamManager_(streamManager) {
    setAccessibleName(QStringLiteral("Update Live"));
    setToolTip(QStringLiteral("Send to program"));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    connect(this, &QAbstractButton::clicked, this, &UpdateLiveButton::press);
    for (QVariantAnimation* look : {&pressLook_, &hoverLook_}) {
        look->setDuration(lookChangeMs);
        look->setEasingCurve(QEasingCurve::InOutQuad);
        look->setStartValue(0.0);
        look->setEndValue(0.0);
        connect(look, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    }
}

double UpdateLiveButton::pressProgress() const { return pressLook_.currentValue().toDouble(); }

double UpdateLiveButton::hoverProgress() const { return hoverLook_.currentValue().toDouble(); }

void UpdateLiveButton::animateTo(QVariantAnimation& animation, double target) {
    // From wherever the look is now, so that a change of mind mid-way turns
    // back smoothly.
    const double from = animation.currentValue().toDouble();
    animation.stop();
    animation.setStartValue(from);
    animation.setEndValue(target);
    animation.start();
}

QSize UpdateLiveButton::sizeHint() const {
    // Room for the widest look, padded as when pressed or hovered; the body
    // keeps to the right edge while its padding changes.
    const QFont first = Theme::font(11, Theme::Weight::semibold);
    const double textWidth = std::max(QFontMetricsF(first).horizontalAdvance(QStringLiteral("Update Live")),
                                      QFontMetricsF(Theme::font(9)).horizontalAdvance(QStringLiteral("Send to program")));
    const int w = int(12 * 2 + 16 + 6 + textWidth) + 2 + 2 * kShadowRoom;
    const int h = 8 * 2 + 28 + 2 * kShadowRoom;
    return {w, h};
}

void UpdateLiveButton::press() {
    setIsPressed(true);
    streamManager_.updateLive();
    QTimer::singleShot(pressedFeedbackMs, this, [this] { setIsPressed(false); });
}

void UpdateLiveButton::setIsPressed(bool pressed) {
    if (isPressed_ == pressed) return;
    isPressed_ = pressed;
    animateTo(pressLook_, pressed ? 1.0 : 0.0);
    emit isPressedChanged(pressed);
}

void UpdateLiveButton::setIsHovered(bool hovered) {
    if (isHovered_ == hovered) return;
    isHovered_ = hovered;
    animateTo(hoverLook_, hovered ? 1.0 : 0.0);
    emit isHoveredChanged(hovered);
}

void UpdateLiveButton::enterEvent(QEnterEvent* event) {
    setIsHovered(true);
    QAbstractButton::enterEvent(event);
}

void UpdateLiveButton::leaveEvent(QEvent* event) {
    setIsHovered(false);
    QAbstractButton::leaveEvent(event);
}

void UpdateLiveButton::paintEvent(QPaintEvent*) {
    const double pressed = pressProgress();
    const double hovered = hoverProgress();
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF room = QRectF(rect()).adjusted(kShadowRoom, kShadowRoom, -kShadowRoom, -kShadowRoom);
    // The padding widens while pressed or hovered; the body keeps to the
    // right edge of its room.
    const double paddingX = lerp(8, 12, std::max(pressed, hovered));
    const QRectF body(room.right() - (room.width() - 2 * (12 - paddingX)), room.top(),
                      room.width() - 2 * (12 - paddingX), room.height());
    const QColor fill = blend(Theme::orange(), Theme::green(), pressed);
    const double scale = lerp(1.0, 0.95, pressed);
    p.translate(body.center());
    p.scale(scale, scale);
    p.translate(-body.center());

    // Shadow: the fill's colour at 0.4, wider while hovered.
    const double shadowRadius = lerp(4, 8, hovered);
    const int rings = int(std::ceil(shadowRadius));
    for (int i = rings; i >= 1; --i) {
        QPainterPath glow;
        glow.addRoundedRect(body.adjusted(-i, -i + 2, i, i + 2), 8 + i, 8 + i);
        p.fillPath(glow, Theme::withAlpha(fill, 0.4 / shadowRadius));
    }
    QPainterPath shape;
    shape.addRoundedRect(body, 8, 8);
    p.fillPath(shape, fill);

    const double x = body.left() + paddingX;
    const double textX = x + 16 + 6;
    const QFont first = Theme::font(11, Theme::Weight::semibold);
    // The two looks' contents cross-fade.
    if (pressed < 1) {
        p.setOpacity(1 - pressed);
        p.drawPixmap(QPointF(x, body.center().y() - 8), Symbols::pixmap("arrow.up.circle.fill", 16, Theme::white(0.9)));
        const double h1 = QFontMetricsF(first).height();
        const double h2 = QFontMetricsF(Theme::font(9)).height();
        const double top = body.center().y() - (h1 + 2 + h2) / 2;
        p.setFont(first);
        p.setPen(Qt::white);
        p.drawText(QRectF(textX, top, body.right() - textX, h1), Qt::AlignLeft | Qt::AlignVCenter,
                   QStringLiteral("Update Live"));
        p.setFont(Theme::font(9));
        p.setPen(Theme::white(0.7));
        p.drawText(QRectF(textX, top + h1 + 2, body.right() - textX, h2), Qt::AlignLeft | Qt::AlignVCenter,
                   QStringLiteral("Send to program"));
    }
    if (pressed > 0) {
        p.setOpacity(pressed);
        p.drawPixmap(QPointF(x, body.center().y() - 8), Symbols::pixmap("checkmark.circle.fill", 16, Theme::white(0.9)));
        p.setFont(first);
        p.setPen(Qt::white);
        p.drawText(QRectF(textX, body.top(), body.right() - textX, body.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   QStringLiteral("Updated!"));
    }
}

}  // namespace orvane
