#include "console/controls/ValueSliderAccessible.h"

#include "console/controls/ValueSlider.h"

namespace orvane {

ValueSliderAccessible::ValueSliderAccessible(ValueSlider* slider)
    : QAccessibleWidget(slider, QAccessible::Slider) {}

ValueSlider* ValueSliderAccessible::slider() const { return static_cast<ValueSlider*>(widget()); }

void* ValueSliderAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString ValueSliderAccessible::text(QAccessible::Text t) const {
    if (t == QAccessible::Value) return QString::number(slider()->currentValue());
    return QAccessibleWidget::text(t);
}

QVariant ValueSliderAccessible::currentValue() const { return slider()->currentValue(); }

void ValueSliderAccessible::setCurrentValue(const QVariant& value) {
    bool ok = false;
    const double v = value.toDouble(&ok);
    if (!ok || !slider()->isEnabled()) return;
    slider()->editValue(v);
}

QVariant ValueSliderAccessible::maximumValue() const { return slider()->maximumValue(); }

QVariant ValueSliderAccessible::minimumValue() const { return slider()->minimumValue(); }

QVariant ValueSliderAccessible::minimumStepSize() const { return slider()->step(); }

}  // namespace orvane
