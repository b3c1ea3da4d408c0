#include "console/controls/ColorSwatchButton.h"

#include <QColorDialog>
#include <QPainter>

#include "console/controls/Theme.h"

namespace orvane {

ColorSwatchButton::ColorSwatchButton(const QString& label, QWidget* parent) : QPushButton(label, parent) {
    setAccessibleName(label);
    setCursor(Qt::PointingHandCursor);
    setFixedHeight(24);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, &ColorSwatchButton::choose);
}

void ColorSwatchButton::setColor(const CodableColor& color) {
    color_ = color;
    update();
}

CodableColor ColorSwatchButton::fromQColor(const QColor& color) {
    if (!color.isValid()) return {0, 0, 0, 1};
    const QColor rgb = color.toRgb();
    return {rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF()};
}

QColor ColorSwatchButton::toQColor(const CodableColor& color) {
    return QColor::fromRgbF(float(color.red), float(color.green), float(color.blue), float(color.alpha));
}

void ColorSwatchButton::choose() {
    auto* dialog = new QColorDialog(toQColor(color_), window());
    dialog->setOption(QColorDialog::ShowAlphaChannel);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(text());
    connect(dialog, &QColorDialog::colorSelected, this, [this](const QColor& chosen) {
        setColor(fromQColor(chosen));
        emit colorChosen(color_);
    });
    dialog->open();
}

void ColorSwatchButton::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Theme::white(0.9));
    p.setFont(Theme::font(11));
    const QRectF well(width() - 40, 2, 38, height() - 4);
    p.drawText(QRectF(0, 0, well.left() - 6, height()), Qt::AlignLeft | Qt::AlignVCenter, text());
    p.setPen(QPen(Theme::white(underMouse() ? 0.6 : 0.3), 1));
    p.setBrush(toQColor(color_));
    p.drawRoundedRect(well, 5, 5);
}

}  // namespace orvane
