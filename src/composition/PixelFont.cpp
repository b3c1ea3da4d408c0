#include "composition/PixelFont.h"

#include <QImage>
#include <QPaintDevice>
#include <algorithm>

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
    f.setPointSizeF(std::max(0.25, pixelSize * 72.0 / dpi));
    f.setWeight(weight);
    return f;
}

QFontMetricsF PixelFont::metrics(const QFont& font, const QPaintDevice* device) {
    return QFontMetricsF(font, resolve(device));
}

}  // namespace orvane
