#include "console/scene_tab/GradientPresetButton.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include "console/controls/ColorSwatchButton.h"
#include "console/controls/Theme.h"

namespace orvane {

GradientPresetButton::GradientPresetButton(const GradientPreset& preset, QWidget* parent)
    : QPushButton(parent), preset_(preset) {
    const QString name = QString::fromStdString(preset.name);
    setAccessibleName(name);
    setToolTip(name);
    setCursor(Qt::PointingHandCursor);
    setFixedSize(44, 52);
}

void GradientPresetButton::setMarked(bool marked) {
    if (marked_ == marked) return;
    marked_ = marked;
    update();
}

void GradientPresetButton::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF swatch(3, 3, width() - 6, width() - 6);
    QLinearGradient gradient(swatch.topLeft(), swatch.bottomRight());
    const auto& colors = preset_.colors;
    for (std::size_t i = 0; i < colors.size(); ++i)
        gradient.setColorAt(colors.size() > 1 ? double(i) / double(colors.size() - 1) : 0,
                            ColorSwatchButton::toQColor(colors[i]));
    QPainterPath path;
    path.addRoundedRect(swatch, 6, 6);
    p.fillPath(path, gradient);
    p.setPen(marked_ ? QPen(Theme::purple(), 2) : QPen(Theme::white(underMouse() ? 0.4 : 0.15), 1));
    p.drawPath(path);
    p.setPen(Theme::white(0.7));
    p.setFont(Theme::font(8));
    p.drawText(QRectF(0, swatch.bottom() + 1, width(), height() - swatch.bottom() - 1), Qt::AlignCenter,
               fontMetrics().elidedText(QString::fromStdString(preset_.name), Qt::ElideRight, width()));
}

}  // namespace orvane
