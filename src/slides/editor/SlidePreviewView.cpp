#include "slides/editor/SlidePreviewView.h"

#include <QPainter>

#include "slides/SlideImageLoader.h"

namespace orvane {

SlidePreviewView::SlidePreviewView(SlideImageLoader& loader, QWidget* parent)
    : QWidget(parent), renderer_(loader) {
    setAccessibleName(QStringLiteral("Slide preview"));
    setMinimumSize(240, 135);
    connect(&loader, &SlideImageLoader::imageArrived, this, qOverload<>(&QWidget::update));
}

void SlidePreviewView::show(const SlidesResource& deck, const Slide& slide) {
    deck_ = deck;
    slide_ = slide;
    update();
}

QRectF SlidePreviewView::slideBox() const {
    const QRectF area = QRectF(rect()).adjusted(8, 8, -8, -8);
    double w = area.width();
    double h = w * 9.0 / 16.0;
    if (h > area.height()) {
        h = area.height();
        w = h * 16.0 / 9.0;
    }
    return QRectF(area.center().x() - w / 2, area.center().y() - h / 2, w, h);
}

void SlidePreviewView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(20, 20, 24));
    renderer_.paintPreview(painter, slideBox(), deck_, slide_);
}

}  // namespace orvane
