#include "slides/SlideGeometry.h"

#include <algorithm>

namespace orvane {

double SlideGeometry::imageUnit(QSizeF view) { return std::min(view.width() / 1920.0, view.height() / 1080.0); }

std::optional<double> SlideGeometry::maxImageWidth(ImageSize size, QSizeF view) {
    const double u = imageUnit(view);
    switch (size) {
    case ImageSize::small: return 300 * u;
    case ImageSize::medium: return 500 * u;
    case ImageSize::large: return 700 * u;
    case ImageSize::full: return std::nullopt;
    }
    return std::nullopt;
}

double SlideGeometry::imageBoxHeight(ImagePosition position, QSizeF view) {
    return (position == ImagePosition::left || position == ImagePosition::right) ? 0.8 * view.height()
                                                                                  : 0.7 * view.height();
}

QSizeF SlideGeometry::fitImage(QSizeF image, std::optional<double> maxWidth, double maxHeight) {
    if (image.isEmpty()) return {};
    double scale = maxHeight / image.height();
    if (maxWidth) scale = std::min(scale, *maxWidth / image.width());
    scale = std::max(0.0, scale);
    return {image.width() * scale, image.height() * scale};
}

PageControlLayout SlideGeometry::pageControl(QSizeF view, QSizeF counterContent) {
    const double w = view.width();
    const double button = 0.02 * w;
    const double spacing = 0.006 * w;
    const double pad = 0.01 * w;
    const QSizeF counter(counterContent.width() + 2 * 0.006 * w, counterContent.height() + 2 * 0.003 * w);
    const double rowWidth = 2 * button + counter.width() + 2 * spacing;
    const double rowHeight = std::max(button, counter.height());
    PageControlLayout out;
    out.background = QRectF((w - rowWidth) / 2 - pad, view.height() - rowHeight - 2 * pad, rowWidth + 2 * pad,
                            rowHeight + 2 * pad);
    const double x = out.background.left() + pad;
    const double mid = out.background.center().y();
    out.previous = QRectF(x, mid - button / 2, button, button);
    out.counter = QRectF(x + button + spacing, mid - counter.height() / 2, counter.width(), counter.height());
    out.next = QRectF(out.counter.right() + spacing, mid - button / 2, button, button);
    out.symbolSize = 0.008 * w;
    out.cornerRadius = 0.004 * w;
    return out;
}

}  // namespace orvane
