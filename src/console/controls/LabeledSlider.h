#pragma once

#include <QWidget>

class QLabel;

namespace orvane {

class ValueSlider;

// A panel's slider row: the label and the read-out of the value on one
// line, the slider below. The slider carries the label as its accessible
// name; the read-out is written with a printf format such as "%.2fx".
class LabeledSlider : public QWidget {
    Q_OBJECT

public:
    LabeledSlider(const QString& label, double minimum, double maximum, double step, const QString& readoutFormat,
                  QWidget* parent = nullptr);

    ValueSlider* slider() const { return slider_; }
    QString label() const;
    QString readout() const;
    double value() const;
    // Shows a value without reporting it.
    void setShownValue(double value);

signals:
    void valueEdited(double value);

private:
    void showReadout(double value);

    QLabel* label_ = nullptr;
    QLabel* readout_ = nullptr;
    ValueSlider* slider_ = nullptr;
    QString format_;
};

}  // namespace orvane
