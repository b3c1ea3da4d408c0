#include "console/stages/UpdateLiveButton.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimer>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
constexpr int kShadowRoom = 10;  // space around the button for its shadow and scale
}

UpdateLiveButton::UpdateLiveButton(StreamManager& streamManager, QWidget* parent)
    : QAbstractButton(parent), streamManager_(streamManager) {
    setAccessibleName(QStringLiteral("Update Live"));
    setToolTip(QStringLiteral("Send to program"));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    connect(this, &QAbstractButton::clicked, this, &UpdateLiveButton::press);
}

QSize UpdateLiveButton::sizeHint() const {
    const double paddingX = (isPressed_ || isHovered_) ? 12 : 8;
    const QFont first = Theme::font(11, Theme::Weight::semibold);
    const double textWidth = std::max(QFontMetricsF(first).horizontalAdvance(QStringLiteral("Update Live")),
                                      QFontMetricsF(Theme::font(9)).horizontalAdvance(QStringLiteral("Send to program")));
    const int w = int(paddingX * 2 + 16 + 6 + textWidth) + 2 + 2 * kShadowRoom;
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
    updateGeometry();
    update();
    emit isPressedChanged(pressed);
}

void UpdateLiveButton::setIsHovered(bool hovered) {
    if (isHovered_ == hovered) return;
    isHovered_ = hovered;
    updateGeometry();
    update();
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
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF body = QRectF(rect()).adjusted(kShadowRoom, kShadowRoom, -kShadowRoom, -kShadowRoom);
    const QColor fill = isPressed_ ? Theme::green() : Theme::orange();
    const double scale = isPressed_ ? 0.95 : 1.0;
    p.translate(body.center());
    p.scale(scale, scale);
    p.translate(-body.center());

    // Shadow: the fill's colour at 0.4, wider while hovered.
    const double shadowRadius = isHovered_ ? 8 : 4;
    for (int i = int(shadowRadius); i >= 1; --i) {
        QPainterPath glow;
        glow.addRoundedRect(body.adjusted(-i, -i + 2, i, i + 2), 8 + i, 8 + i);
        p.fillPath(glow, Theme::withAlpha(fill, 0.4 / shadowRadius));
    }
    QPainterPath shape;
    shape.addRoundedRect(body, 8, 8);
    p.fillPath(shape, fill);

    const double paddingX = (isPressed_ || isHovered_) ? 12 : 8;
    const double x = body.left() + paddingX;
    p.drawPixmap(QPointF(x, body.center().y() - 8),
                 Symbols::pixmap(isPressed_ ? "checkmark.circle.fill" : "arrow.up.circle.fill", 16, Theme::white(0.9)));
    const double textX = x + 16 + 6;
    const QFont first = Theme::font(11, Theme::Weight::semibold);
    p.setFont(first);
    p.setPen(Qt::white);
    if (isPressed_) {
        p.drawText(QRectF(textX, body.top(), body.right() - textX, body.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   QStringLiteral("Updated!"));
        return;
    }
    const double h1 = QFontMetricsF(first).height();
    const double h2 = QFontMetricsF(Theme::font(9)).height();
    const double top = body.center().y() - (h1 + 2 + h2) / 2;
    p.drawText(QRectF(textX, top, body.right() - textX, h1), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Update Live"));
    p.setFont(Theme::font(9));
    p.setPen(Theme::white(0.7));
    p.drawText(QRectF(textX, top + h1 + 2, body.right() - textX, h2), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Send to program"));
}

}  // namespace orvane
