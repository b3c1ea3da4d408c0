#pragma once

#include <QFont>
#include <QFontMetricsF>

class QPaintDevice;

namespace orvane {

// Fonts sized in canvas points, which are pixels of the target device.
// Fractional sizes are kept (30, 12.6, 38.4), which pixel sizes cannot do, so
// the size goes through the device's logical resolution instead. A null
// device stands for an image at the default 96 dots per inch.
class PixelFont {
public:
    static QFont system(double pixelSize, QFont::Weight weight, const QPaintDevice* device);

    // Metrics of a font on the device it will be drawn on.
    static QFontMetricsF metrics(const QFont& font, const QPaintDevice* device);
};

}  // namespace orvane
