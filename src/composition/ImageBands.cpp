#include "composition/ImageBands.h"

#include <QPainter>
#include <QTransform>
#include <algorithm>
#include <cmath>

#include "composition/PixelBlend.h"
#include "composition/PlainImageTarget.h"

namespace orvane {

namespace {

// Copies or blends the rows straight into the painter's image when it is a
// plain one and the image lands on its pixel grid; false otherwise.
bool blitInto(QPainter& painter, QPoint at, const QImage& image, QRect source) {
    const bool opaque = image.format() == QImage::Format_RGB32;
    if (!opaque && image.format() != QImage::Format_ARGB32_Premultiplied) return false;
    const std::optional<PlainImageTarget> into = PlainImageTarget::of(painter);
    if (!into || into->toDevice().type() > QTransform::TxTranslate) return false;
    const QRect placed = QRect(at, source.size()) & into->writable();
    if (placed.isEmpty()) return true;
    const int dx = source.left() - at.x();
    const int dy = source.top() - at.y();
    // A narrow strip (a glow's side) touches a line or two of each row, one
    // row apart: the hardware does not see that coming, so ask ahead.
    const bool narrow = placed.width() <= 32;
    constexpr int kAhead = 6;
    for (int y = placed.top(); y <= placed.bottom(); ++y) {
        const auto* in = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y + dy)) + placed.left() + dx;
        std::uint32_t* out = into->row(y) + placed.left();
        if (narrow && y + kAhead <= placed.bottom()) {
            const auto* nextIn = reinterpret_cast<const char*>(image.constScanLine(y + kAhead + dy) + 4 * (placed.left() + dx));
            const auto* nextOut = reinterpret_cast<const char*>(into->row(y + kAhead) + placed.left());
            for (int offset = 0; offset < placed.width() * 4 + 63; offset += 64) {
                __builtin_prefetch(nextIn + offset);
                __builtin_prefetch(nextOut + offset, 1);
            }
        }
        if (opaque)
            PixelBlend::copyOpaque(in, out, placed.width());
        else
            PixelBlend::sourceOver(in, out, placed.width());
    }
    return true;
}

}  // namespace

void drawImageInBands(QPainter& painter, QPointF at, const QImage& image, QRect source) {
    source &= image.rect();
    if (source.isEmpty()) return;
    const QTransform t = painter.deviceTransform();
    const QPointF device = t.map(at);
    // Positions beyond any image's reach (from damaged numbers) are Qt's to
    // discard; whole pixels from here on fit an int.
    const bool onGrid = image.devicePixelRatio() == 1 && t.type() <= QTransform::TxTranslate &&
                        std::abs(device.x()) < 1e7 && std::abs(device.y()) < 1e7 &&
                        device.x() == std::floor(device.x()) && device.y() == std::floor(device.y());
    if (onGrid && blitInto(painter, device.toPoint(), image, source)) return;
    if (!onGrid || source.height() <= kImageBandRows) {
        painter.drawImage(at, image, QRectF(source));
        return;
    }
    for (int top = source.top(); top <= source.bottom(); top += kImageBandRows) {
        const int rows = std::min(kImageBandRows, source.bottom() + 1 - top);
        painter.drawImage(QPointF(at.x(), at.y() + (top - source.top())), image,
                          QRectF(source.left(), top, source.width(), rows));
    }
}

}  // namespace orvane
