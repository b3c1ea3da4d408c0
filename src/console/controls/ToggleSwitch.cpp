#include "console/controls/ToggleSwitch.h"

#include <QPainter>
#include <QSignalBlocker>

#include "console/controls/Theme.h"

namespace orvane {

namespace {
constexpr int pillWidth = 34;
constexpr int pillHeight = 18;
}  // namespace

ToggleSwitch::ToggleSwitch(const QString& label, QWidget* parent) : QAbstractButton(parent) {
    setText(label);
    setAccessibleName(label);
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setFont(Theme::font(11));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ToggleSwitch::setLabelVisible(bool visible) {
    labelVisible_ = visible;
    setSizePolicy(visible ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
    updateGeometry();
    update();
}

void ToggleSwitch::setOn(bool on) {
    const QSignalBlocker block(this);
    setChecked(on);
    update();
}

QSize ToggleSwitch::sizeHint() const {
    const int textWidth = labelVisible_ ? fontMetrics().horizontalAdvance(text()) + 12 : 0;
    return {textWidth + pillWidth + 2, pillHeight + 6};
}

void ToggleSwitch::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF pill(width() - pillWidth - 1, (height() - pillHeight) / 2.0, pillWidth, pillHeight);
    if (labelVisible_) {
        p.setPen(isEnabled() ? Theme::white(0.9) : Theme::white(0.4));
        p.setFont(font());
        p.drawText(QRectF(0, 0, pill.left() - 8, height()), Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(text(), Qt::ElideRight, int(pill.left()) - 8));
    }
    p.setPen(Qt::NoPen);
    QColor track = isChecked() ? Theme::purple() : Theme::white(0.2);
    if (!isEnabled()) track.setAlphaF(track.alphaF() * 0.5);
    p.setBrush(track);
    p.drawRoundedRect(pill, pillHeight / 2.0, pillHeight / 2.0);
    const double knob = pillHeight - 4;
    const double x = isChecked() ? pill.right() - knob - 2 : pill.left() + 2;
    p.setBrush(Qt::white);
    p.drawEllipse(QRectF(x, pill.top() + 2, knob, knob));
    if (hasFocus()) {
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(Theme::withAlpha(Theme::purple(), 0.6), 1));
        p.drawRoundedRect(pill.adjusted(-1, -1, 1, 1), pillHeight / 2.0 + 1, pillHeight / 2.0 + 1);
    }
}

}  // namespace orvane
