#pragma once

#include <QImage>
#include <QPointF>
#include <QRect>

class QPainter;

namespace orvane {

// Draws `source` of `image` unscaled with its top left at `at`, as
// painter.drawImage(at, image, source) would. Into a plain image (see
// PlainImageTarget) a 32-bit image on the pixel grid is copied or blended
// row by row; otherwise Qt draws it, a few rows at a time.
//
// Qt's raster engine splits any blend of more than about a hundred spans
// into pieces for its GUI thread pool and waits for them. For the overlays
// and frames of one render that buys nothing: each piece is too small to
// repay the two thread switches it costs, and the render already has a
// thread (and on a busy machine a core) of its own. A band of
// `kImageBandRows` rows stays on the calling thread whenever the clip splits
// its rows into few spans. Drawn whole, as one call, when the painter would
// resample the image (a scaling transform or a position off the pixel
// grid): bands would then blend across their seams.
inline constexpr int kImageBandRows = 16;

void drawImageInBands(QPainter& painter, QPointF at, const QImage& image, QRect source);
inline void drawImageInBands(QPainter& painter, QPointF at, const QImage& image) {
    drawImageInBands(painter, at, image, image.rect());
}

// As drawImageInBands, less `hole` (pixels of the image): what lies around
// something opaque that will be drawn over it. Into a plain image the parts
// either side of the hole are drawn row by row, so that the two sides are
// read and written as the rows lie in memory rather than as two long, thin
// strips.
void drawImageAround(QPainter& painter, QPointF at, const QImage& image, QRect source, QRect hole);

}  // namespace orvane
