#include "console/controls/ValueSlider.h"

#include <QAccessible>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "console/controls/ValueSliderAccessible.h"

namespace orvane {

namespace {

QAccessibleInterface* valueSliderAccessibleFactory(const QString& className, QObject* object) {
    if (className == QLatin1String("orvane::ValueSlider"))
        if (auto* slider = qobject_cast<ValueSlider*>(object)) return new ValueSliderAccessible(slider);
    return nullptr;
}

// Drops the noise that adding steps in binary leaves (0.8 + 5 * 0.05).
double valueSliderTidy(double value) { return std::round(value * 1e9) / 1e9; }

}  // namespace

ValueSlider::ValueSlider(double minimum, double maximum, double step, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), minimum_(minimum), maximum_(maximum), step_(step), value_(minimum) {
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(valueSliderAccessibleFactory);
        return true;
    }();
    (void)factoryInstalled;
    setRange(0, indexFor(maximum_));
    setSingleStep(1);
    setPageStep(std::max(1, QSlider::maximum() / 10));
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setStyleSheet(QStringLiteral(
        "QSlider::groove:horizontal { height: 4px; background: rgba(255,255,255,0.15); border-radius: 2px; }"
        "QSlider::sub-page:horizontal { background: #af52de; border-radius: 2px; }"
        "QSlider::handle:horizontal { width: 14px; height: 14px; margin: -5px 0; border-radius: 7px;"
        " background: white; }"));
    connect(this, &QSlider::valueChanged, this, [this](int index) {
        if (showing_) return;
        const double next = valueAt(index);
        if (next == value_) return;
        value_ = next;
        emit valueEdited(value_);
    });
}

int ValueSlider::indexFor(double value) const {
    const double clamped = std::clamp(value, minimum_, maximum_);
    return int(std::lround((clamped - minimum_) / step_));
}

double ValueSlider::valueAt(int index) const {
    return valueSliderTidy(std::min(maximum_, minimum_ + index * step_));
}

double ValueSlider::snapped(double value) const { return valueAt(indexFor(value)); }

void ValueSlider::setShownValue(double value) {
    if (!std::isfinite(value)) value = minimum_;
    value_ = value;
    showing_ = true;
    setValue(indexFor(value));
    showing_ = false;
}

void ValueSlider::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    QSlider::wheelEvent(event);
}

void ValueSlider::editValue(double value) {
    if (!std::isfinite(value)) return;
    const double next = snapped(value);
    if (next == value_) {
        setShownValue(next);
        return;
    }
    setShownValue(next);
    emit valueEdited(value_);
}

}  // namespace orvane
