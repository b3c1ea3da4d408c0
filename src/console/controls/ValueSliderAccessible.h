#pragma once

#include <QAccessibleWidget>

namespace orvane {

class ValueSlider;

// What assistive technology sees of a ValueSlider: a slider whose value is
// the real number it stands for (1.25, not the knob's 9th notch), and which
// can be set the same way.
class ValueSliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit ValueSliderAccessible(ValueSlider* slider);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text t) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    ValueSlider* slider() const;
};

}  // namespace orvane
