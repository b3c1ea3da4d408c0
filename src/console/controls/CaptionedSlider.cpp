#include "console/controls/CaptionedSlider.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>
#include <cmath>

#include "console/controls/SidebarStyle.h"

namespace orvane {

CaptionedSlider::CaptionedSlider(const QString& name, double minimum, double maximum, double step, Format format,
                             QWidget* parent)
    : QWidget(parent), minimum_(minimum), step_(step), format_(std::move(format)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    readOut_ = SidebarStyle::label(QString(), 11, Theme::Weight::regular, Theme::white(0.85));
    column->addWidget(readOut_);
    slider_ = new QSlider(Qt::Horizontal);
    slider_->setAccessibleName(name);
    // Whole ticks, so that every value the slider can take is one step.
    slider_->setRange(0, int(std::lround((maximum - minimum) / step)));
    slider_->setPageStep(1);
    column->addWidget(slider_);
    connect(slider_, &QSlider::valueChanged, this, [this] {
        showValue();
        emit valueChanged(value());
    });
    showValue();
}

double CaptionedSlider::value() const {
    // Rounded to millionths, so that steps of 0.1 store 0.3, not
    // 0.30000000000000004.
    const double raw = minimum_ + slider_->value() * step_;
    return std::round(raw * 1e6) / 1e6;
}

void CaptionedSlider::setValue(double value) {
    {
        const QSignalBlocker block(slider_);
        slider_->setValue(int(std::lround((value - minimum_) / step_)));
    }
    showValue();
}

void CaptionedSlider::showValue() { readOut_->setText(format_(value())); }

}  // namespace orvane
