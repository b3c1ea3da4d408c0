#include "teleprompter/ColorWellButton.h"

#include <QColorDialog>

#include "paint/ColorConvert.h"

namespace orvane {

ColorWellButton::ColorWellButton(const QString& accessibleLabel, QWidget* parent) : QPushButton(parent) {
    setAccessibleName(accessibleLabel);
    setToolTip(accessibleLabel);
    setFixedSize(44, 24);
    connect(this, &QPushButton::clicked, this, &ColorWellButton::choose);
    setColor(color_);
}

void ColorWellButton::setColor(const CodableColor& color) {
    color_ = color;
    const QColor shown = ColorConvert::from(color);
    setStyleSheet(QStringLiteral("QPushButton { background: %1; border: 1px solid rgba(255,255,255,80); "
                                 "border-radius: 4px; }")
                      .arg(shown.name(QColor::HexArgb)));
}

void ColorWellButton::choose() {
    const QColor picked = QColorDialog::getColor(ColorConvert::from(color_), this, accessibleName(),
                                                 QColorDialog::ShowAlphaChannel);
    if (!picked.isValid()) return;
    const QColor rgb = picked.toRgb();
    CodableColor color{rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF()};
    setColor(color);
    emit colorPicked(color);
}

}  // namespace orvane
