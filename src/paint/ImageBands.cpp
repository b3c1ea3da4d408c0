#include "paint/ImageBands.h"

#include <QPainter>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <optional>

#include "paint/PixelBlend.h"
#include "paint/PlainImageTarget.h"

namespace orvane {

namespace {

// Rows ahead that short parts of rows are asked for: parts a row apart,
// which the hardware does not see coming.
constexpr int kAhead = 6;
// Parts of a row up to this many pixels are asked for ahead.
constexpr int kShortPart = 512;

// Copies or blends the rows of `source` less `hole` (image pixels; may be
// empty) straight into the painter's image, with the image's pixel `source`'s
// top left landing on device pixel `at`, when the painter draws into a
// plain image and the image lands on its pixel grid; false otherwise.
bool blitInto(QPainter& painter, QPoint at, const QImage& image, QRect source, QRect hole) {
    const bool opaque = image.format() == QImage::Format_RGB32;
    if (!opaque && image.format() != QImage::Format_ARGB32_Premultiplied) return false;
    const std::optional<PlainImageTarget> into = PlainImageTarget::of(painter);
    if (!into || into->toDevice().type() > QTransform::TxTranslate) return false;
    const QRect placed = QRect(at, source.size()) & into->writable();
    if (placed.isEmpty()) return true;
    const QPoint shift = source.topLeft() - at;
    const QRect gap = hole.translated(-shift) & placed;
    // The parts of device row y to draw: all of it, or what lies either
    // side of the hole.
    struct Part {
        int from, to;
    };
    const auto partsOf = [&](int y, Part* parts) {
        if (gap.isEmpty() || y < gap.top() || y > gap.bottom()) {
            parts[0] = {placed.left(), placed.right() + 1};
            return 1;
        }
        int n = 0;
        if (gap.left() > placed.left()) parts[n++] = {placed.left(), gap.left()};
        if (gap.right() < placed.right()) parts[n++] = {gap.right() + 1, placed.right() + 1};
        return n;
    };
    const auto rowOf = [&](int y) {
        return reinterpret_cast<const std::uint32_t*>(image.constScanLine(y + shift.y())) + shift.x();
    };
    for (int y = placed.top(); y <= placed.bottom(); ++y) {
        Part parts[2];
        if (y + kAhead <= placed.bottom()) {
            Part ahead[2];
            const int n = partsOf(y + kAhead, ahead);
            for (int i = 0; i < n; ++i) {
                if (ahead[i].to - ahead[i].from > kShortPart) continue;
                const auto* in = reinterpret_cast<const char*>(rowOf(y + kAhead) + ahead[i].from);
                const auto* out = reinterpret_cast<const char*>(into->row(y + kAhead) + ahead[i].from);
                for (int offset = 0; offset < (ahead[i].to - ahead[i].from) * 4 + 63; offset += 64) {
                    __builtin_prefetch(in + offset);
                    __builtin_prefetch(out + offset, 1);
                }
            }
        }
        const int n = partsOf(y, parts);
        const std::uint32_t* in = rowOf(y);
        std::uint32_t* out = into->row(y);
        for (int i = 0; i < n; ++i) {
            const int count = parts[i].to - parts[i].from;
            if (opaque)
                PixelBlend::copyOpaque(in + parts[i].from, out + parts[i].from, count);
            else
                PixelBlend::sourceOver(in + parts[i].from, out + parts[i].from, count);
        }
    }
    return true;
}

// Whole device pixel for `at` when the painter would put the image's
// pixels on its pixel grid there.
std::optional<QPoint> onGrid(QPainter& painter, QPointF at, const QImage& image) {
    const QTransform t = painter.deviceTransform();
    const QPointF device = t.map(at);
    // Positions beyond any image's reach (from damaged numbers) are Qt's to
    // discard; whole pixels from here on fit an int.
    if (image.devicePixelRatio() == 1 && t.type() <= QTransform::TxTranslate && std::abs(device.x()) < 1e7 &&
        std::abs(device.y()) < 1e7 && device.x() == std::floor(device.x()) && device.y() == std::floor(device.y()))
        return device.toPoint();
    return std::nullopt;
}

}  // namespace

void drawImageInBands(QPainter& painter, QPointF at, const QImage& image, QRect source) {
    source &= image.rect();
    if (source.isEmpty()) return;
    const std::optional<QPoint> grid = onGrid(painter, at, image);
    if (grid && blitInto(painter, *grid, image, source, QRect())) return;
    if (!grid || source.height() <= kImageBandRows) {
        painter.drawImage(at, image, QRectF(source));
        return;
    }
    for (int top = source.top(); top <= source.bottom(); top += kImageBandRows) {
        const int rows = std::min(kImageBandRows, source.bottom() + 1 - top);
        painter.drawImage(QPointF(at.x(), at.y() + (top - source.top())), image,
                          QRectF(source.left(), top, source.width(), rows));
    }
}

void drawImageAround(QPainter& painter, QPointF at, const QImage& image, QRect source, QRect hole) {
    source &= image.rect();
    hole &= source;
    if (source.isEmpty()) return;
    if (hole.isEmpty()) {
        drawImageInBands(painter, at, image, source);
        return;
    }
    const std::optional<QPoint> grid = onGrid(painter, at, image);
    if (grid && blitInto(painter, *grid, image, source, hole)) return;
    const QRect parts[] = {
        QRect(source.left(), source.top(), source.width(), hole.top() - source.top()),
        QRect(source.left(), hole.bottom() + 1, source.width(), source.bottom() - hole.bottom()),
        QRect(source.left(), hole.top(), hole.left() - source.left(), hole.height()),
        QRect(hole.right() + 1, hole.top(), source.right() - hole.right(), hole.height()),
    };
    for (const QRect& part : parts)
        if (!part.isEmpty())
            drawImageInBands(painter, at + QPointF(part.topLeft() - source.topLeft()), image, part);
}

}  // namespace orvane
