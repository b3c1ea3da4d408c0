#include "paint/PixelFont.h"

#include <QImage>
#include <QPaintDevice>
#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

const QPaintDevice* resolve(const QPaintDevice* device) {
    static const QImage reference(1, 1, QImage::Format_ARGB32_Premultiplied);
    return device ? device : &reference;
}

}  // namespace

QFont PixelFont::system(double pixelSize, QFont::Weight weight, const QPaintDevice* device) {
    const int dpi = resolve(device)->logicalDpiY() > 0 ? resolve(device)->logicalDpiY() : 96;
    QFont f;
    // Sizes out of any sensible range (a damaged document) are held to it.
    const double size = std::isfinite(pixelSize) ? std::clamp(pixelSize, 0.25, 2000.0) : 12.0;
    f.setPointSizeF(size * 72.0 / dpi);
    f.setWeight(weight);
    return f;
}

QFontMetricsF PixelFont::metrics(const QFont& font, const QPaintDevice* device) {
    return QFontMetricsF(font, resolve(device));
}

}  // namespace orvane
