#pragma once

#include <QSlider>

namespace orvane {

// A horizontal slider over a range of real numbers with a fixed step, such
// as 0.8 to 1.5 by 0.05. It keeps the value it was given exactly (a stored
// 1.23 stays 1.23 until the presenter moves the knob) and reports every
// move by the presenter, or by assistive technology through its accessible
// value, as `valueEdited` with the value on the step grid.
class ValueSlider : public QSlider {
    Q_OBJECT

public:
    ValueSlider(double minimum, double maximum, double step, QWidget* parent = nullptr);

    double minimumValue() const { return minimum_; }
    double maximumValue() const { return maximum_; }
    double step() const { return step_; }
    double currentValue() const { return value_; }
    // Shows a value without reporting it.
    void setShownValue(double value);
    // As if the presenter had moved the knob there: the value is clamped,
    // put on the step grid, shown and reported when it changed.
    void editValue(double value);
    // The value on the grid nearest to `value`, within the range.
    double snapped(double value) const;

signals:
    void valueEdited(double value);

protected:
    // The wheel scrolls the panel a slider sits in, unless the slider has
    // the keyboard: passing over it must not change a setting.
    void wheelEvent(QWheelEvent* event) override;

private:
    int indexFor(double value) const;
    double valueAt(int index) const;

    double minimum_;
    double maximum_;
    double step_;
    double value_;
    bool showing_ = false;
};

}  // namespace orvane
