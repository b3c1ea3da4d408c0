#include "console/scene_tab/CameraSizeButton.h"

#include <QPainter>

#include "console/controls/Theme.h"

namespace orvane {

CameraSizeButton::CameraSizeButton(CameraOverlaySize size, QWidget* parent)
    : SelectableTile(title(size), std::string(), true, parent), size_(size) {}

QString CameraSizeButton::title(CameraOverlaySize size) {
    switch (size) {
        case CameraOverlaySize::small: return QStringLiteral("Small");
        case CameraOverlaySize::medium: return QStringLiteral("Medium");
        case CameraOverlaySize::large: return QStringLiteral("Large");
    }
    return QString();
}

double CameraSizeButton::share(CameraOverlaySize size) {
    switch (size) {
        case CameraOverlaySize::small: return 0.3;
        case CameraOverlaySize::medium: return 0.5;
        case CameraOverlaySize::large: return 0.72;
    }
    return 0.5;
}

void CameraSizeButton::paintFigure(QPainter& painter, const QRectF& area) {
    const double h = std::min(area.height() - 6, 18.0);
    const double w = h * 16 / 9;
    const QRectF frame(area.center().x() - w / 2, area.center().y() - h / 2, w, h);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::white(0.45), 1));
    painter.drawRoundedRect(frame, 2, 2);
    const double pw = w * share(size_);
    const double ph = pw * 9 / 16;
    const QRectF picture(frame.right() - pw - 1.5, frame.bottom() - ph - 1.5, pw, ph);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isCurrent() ? Theme::purple() : Theme::white(0.8));
    painter.drawRoundedRect(picture, 1.5, 1.5);
}

}  // namespace orvane
