#pragma once

#include <QRectF>
#include <QSizeF>
#include <optional>

#include "document/DocumentEnums.h"

namespace orvane {

// The page control under a slide, placed for a view.
struct PageControlLayout {
    QRectF background;  // the padded row, on black at 0.2
    QRectF previous;    // button boxes, also the areas that take clicks
    QRectF next;
    QRectF counter;     // the counter's box, padding included
    double symbolSize = 0;
    double cornerRadius = 0;
};

// Slide geometry that follows the view's measured size (W, H).
class SlideGeometry {
public:
    // u = min(W / 1920, H / 1080), with no lower limit.
    static double imageUnit(QSizeF view);
    // Maximum image width for a size; none for `full`.
    static std::optional<double> maxImageWidth(ImageSize size, QSizeF view);
    // Height of the image's box: 0.7 H above or below the text, 0.8 H beside it.
    static double imageBoxHeight(ImagePosition position, QSizeF view);
    // An image of `image` size fitted, aspect kept, within maxWidth by maxHeight.
    static QSizeF fitImage(QSizeF image, std::optional<double> maxWidth, double maxHeight);

    static double bodyPadding(QSizeF view) { return 0.02 * view.width(); }
    static double gap(QSizeF view) { return 0.01 * view.width(); }

    // The page control for a counter of the given measured content size
    // (the three texts side by side, without the counter's padding).
    static PageControlLayout pageControl(QSizeF view, QSizeF counterContent);
};

}  // namespace orvane
