#include "console/controls/LabeledSlider.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/Theme.h"
#include "console/controls/ValueSlider.h"

namespace orvane {

LabeledSlider::LabeledSlider(const QString& label, double minimum, double maximum, double step,
                             const QString& readoutFormat, QWidget* parent)
    : QWidget(parent), format_(readoutFormat) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto* line = new QHBoxLayout;
    line->setSpacing(6);
    label_ = new QLabel(label);
    label_->setFont(Theme::font(11));
    label_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.85); background: transparent;"));
    line->addWidget(label_, 1);
    readout_ = new QLabel;
    readout_->setFont(Theme::font(10, Theme::Weight::medium));
    readout_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.6); background: transparent;"));
    readout_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    line->addWidget(readout_);
    column->addLayout(line);
    slider_ = new ValueSlider(minimum, maximum, step);
    slider_->setAccessibleName(label);
    label_->setBuddy(slider_);
    column->addWidget(slider_);
    connect(slider_, &ValueSlider::valueEdited, this, [this](double value) {
        showReadout(value);
        emit valueEdited(value);
    });
    showReadout(slider_->currentValue());
}

QString LabeledSlider::label() const { return label_->text(); }

QString LabeledSlider::readout() const { return readout_->text(); }

double LabeledSlider::value() const { return slider_->currentValue(); }

void LabeledSlider::setShownValue(double value) {
    slider_->setShownValue(value);
    showReadout(value);
}

void LabeledSlider::showReadout(double value) {
    const QString text = QString::asprintf(format_.toUtf8().constData(), value);
    readout_->setText(text);
    slider_->setAccessibleDescription(text);
}

}  // namespace orvane
