#include "composition/FrameScaler.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "paint/ImageBands.h"
#include "paint/PixelBlend.h"
#include "paint/PlainImageTarget.h"

namespace orvane {

namespace {

// Rows of a band: enough to keep the per-band overhead small, few enough to
// stay in the cache until Qt draws them.
constexpr int kBandBytes = 128 * 1024;

// How many rows ahead the canvas is asked for: the rows a frame is blended
// into are parts of the canvas's rows, which the hardware does not foresee.
constexpr int kCanvasRowsAhead = 3;

// A rounded rectangle in device pixels, its corners quarter ellipses.
struct RoundedRect {
    double left, top, right, bottom, rx, ry;

    // Where a horizontal line at y enters and leaves it; false when it
    // misses.
    bool extent(double y, double* from, double* to) const {
        if (y < top || y > bottom) return false;
        double t = 0;
        if (y < top + ry) t = (top + ry - y) / ry;
        else if (y > bottom - ry) t = (y - (bottom - ry)) / ry;
        const double dx = t > 0 ? rx * (1 - std::sqrt(std::max(0.0, 1 - t * t))) : 0.0;
        *from = left + dx;
        *to = right - dx;
        return *from < *to;
    }
};

// How one device row meets a rounded rectangle: the columns it covers
// wholly, [fullFrom, fullTo), and those it touches at all, [from, to).
// Edge pixels get their coverage from sixteen lines through the row, each
// counted exactly across the pixel.
class RowCoverage {
public:
    static constexpr int kLines = 16;

    RowCoverage(const RoundedRect& shape, int y) {
        if (y >= shape.top + shape.ry && y + 1 <= shape.bottom - shape.ry) {
            straight_ = true;
            lines_ = 1;
            a_[0] = shape.left;
            b_[0] = shape.right;
        } else {
            for (int k = 0; k < kLines; ++k) {
                double a = 0;
                double b = 0;
                if (!shape.extent(y + (k + 0.5) / kLines, &a, &b)) continue;
                a_[lines_] = a;
                b_[lines_] = b;
                ++lines_;
            }
        }
        if (lines_ == 0) return;
        double lowA = a_[0], highA = a_[0], lowB = b_[0], highB = b_[0];
        for (int k = 1; k < lines_; ++k) {
            lowA = std::min(lowA, a_[k]), highA = std::max(highA, a_[k]);
            lowB = std::min(lowB, b_[k]), highB = std::max(highB, b_[k]);
        }
        from = static_cast<int>(std::floor(lowA));
        to = static_cast<int>(std::ceil(highB));
        if (straight_ || lines_ == kLines) {
            fullFrom = static_cast<int>(std::ceil(highA));
            fullTo = std::max(fullFrom, static_cast<int>(std::floor(lowB)));
        } else {
            fullFrom = fullTo = from;
        }
    }

    // The columns row y touches, [from, to), as a RowCoverage finds them,
    // from the one line through the row that lies nearest the shape's
    // middle: the shape is widest there. False when the row misses.
    static bool span(const RoundedRect& shape, int y, int* from, int* to) {
        const double middle = (shape.top + shape.bottom) / 2;
        const int k = std::clamp(static_cast<int>(std::lround((middle - y) * kLines - 0.5)), 0, kLines - 1);
        double a = 0;
        double b = 0;
        if (!shape.extent(y + (k + 0.5) / kLines, &a, &b)) return false;
        *from = static_cast<int>(std::floor(a));
        *to = static_cast<int>(std::ceil(b));
        return *from < *to;
    }

    // 0 to 255.
    std::uint8_t at(int x) const {
        double sum = 0;
        for (int k = 0; k < lines_; ++k) sum += std::clamp(std::min(b_[k], x + 1.0) - std::max(a_[k], double(x)), 0.0, 1.0);
        const double share = straight_ ? sum : sum / kLines;
        return static_cast<std::uint8_t>(std::lround(std::clamp(share, 0.0, 1.0) * 255));
    }

    bool empty() const { return lines_ == 0 || to <= from; }

    int from = 0, to = 0, fullFrom = 0, fullTo = 0;

private:
    bool straight_ = false;
    int lines_ = 0;
    double a_[kLines] = {};
    double b_[kLines] = {};
};

}  // namespace

struct FrameScaler::Plan {
    QRectF placed;  // the target in device pixels
    QRectF source;
    QRect bounds;   // the source pixels sampled
    QImage::Format format = QImage::Format_Invalid;
    int x0 = 0, y0 = 0, width = 0, height = 0;  // the device pixels computed
};

bool FrameScaler::isAvailable() { return RowResampler::isAvailable(); }

FrameScaler::Planned FrameScaler::plan(QPainter& painter, QRectF target, const QImage& frame, QRectF source,
                                       QRectF limit, Plan* out) {
    if (!isAvailable() || !painter.isActive()) return Planned::no;
    const QImage::Format format = frame.format();
    if (format != QImage::Format_RGB32 && format != QImage::Format_ARGB32_Premultiplied) return Planned::no;
    if (source.isNull()) source = QRectF(QPointF(0, 0), QSizeF(frame.size()));
    // Sampling stays within the source's whole pixels.
    const QRect bounds = source.toAlignedRect() & frame.rect();
    if (bounds.width() < 2 || bounds.height() < 2 || !(source.width() > 0 && source.height() > 0)) return Planned::no;
    const QPaintEngine* engine = painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster) return Planned::no;
    const QTransform toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale || toDevice.m11() <= 0 || toDevice.m22() <= 0) return Planned::no;

    const QRectF placed = toDevice.mapRect(target);
    const QRectF visible = placed & limit;
    if (!(visible.width() > 0 && visible.height() > 0)) return Planned::nothing;
    const int x0 = static_cast<int>(std::floor(visible.left()));
    const int y0 = static_cast<int>(std::floor(visible.top()));
    const int width = static_cast<int>(std::ceil(visible.right())) - x0;
    const int height = static_cast<int>(std::ceil(visible.bottom())) - y0;
    if (width <= 0 || height <= 0 || width > 32768 || height > 32768) return Planned::no;

    const RowResampler::Axis columns{x0,           width,           placed.left(), placed.width(),
                                     source.left(), source.width(), bounds.left(), bounds.right()};
    const RowResampler::Axis rows{y0,          height,           placed.top(), placed.height(),
                                  source.top(), source.height(), bounds.top(), bounds.bottom()};
    resampler_.setUp(frame.constBits(), frame.bytesPerLine(), frame.width(), columns, rows);
    *out = Plan{placed, source, bounds, format, x0, y0, width, height};
    return Planned::yes;
}

bool FrameScaler::draw(QPainter& painter, QRectF target, const QImage& frame, QRectF source) {
    // Only device pixels that can show are computed: those of the target
    // within the clip and the paint device.
    QRectF limit(-1e9, -1e9, 2e9, 2e9);
    if (painter.hasClipping()) limit &= painter.deviceTransform().mapRect(painter.clipBoundingRect());
    const QPaintDevice* device = painter.isActive() ? painter.paintEngine()->paintDevice() : nullptr;
    if (device && device->devType() == QInternal::Image)
        limit &= QRectF(QPointF(0, 0), QSizeF(static_cast<const QImage*>(device)->size()));
    else if (!painter.hasClipping())
        return false;
    Plan p;
    const Planned planned = plan(painter, target, frame, source, limit, &p);
    if (planned != Planned::yes) return planned == Planned::nothing;

    // Few rows a band: under a rounded clip each row splits into several
    // spans, and a band must stay under Qt's threshold for handing its
    // blend to the thread pool (see ImageBands.h).
    const int bandRows = std::clamp(kBandBytes / (p.width * 4), 1, std::min(p.height, kImageBandRows / 2));
    if (band_.format() != p.format || band_.width() != p.width || band_.height() != bandRows)
        band_ = QImage(p.width, bandRows, p.format);
    if (band_.isNull()) return false;

    painter.save();
    // Bands are drawn in device pixels: undo whatever the painter adds to
    // its world transform (the device pixel ratio, a view transform).
    painter.setWorldTransform(painter.deviceTransform().inverted() * painter.worldTransform());
    for (int top = 0; top < p.height; top += bandRows) {
        const int rows = std::min(bandRows, p.height - top);
        for (int i = 0; i < rows; ++i)
            std::memcpy(band_.scanLine(i), resampler_.row(p.y0 + top + i, p.x0, p.x0 + p.width),
                        static_cast<std::size_t>(p.width) * 4);
        painter.drawImage(QPointF(p.x0, p.y0 + top), band_, QRectF(0, 0, p.width, rows));
    }
    painter.restore();
    return true;
}

bool FrameScaler::blendInto(QPainter& painter, const Outline& outline, QRectF target, const QImage& frame,
                            QRectF source) {
    if (!isAvailable()) return false;
    const std::optional<PlainImageTarget> into = PlainImageTarget::of(painter);
    if (!into) return false;
    const QTransform toDevice = into->toDevice();
    QRectF limit(into->writable());
    if (limit.isEmpty()) return true;
    const QRectF cut = toDevice.mapRect(outline.rect);
    if (!(cut.width() > 0 && cut.height() > 0) || !std::isfinite(outline.radius)) return false;
    const double radius = std::max(0.0, outline.radius);
    const RoundedRect shape{cut.left(),
                            cut.top(),
                            cut.right(),
                            cut.bottom(),
                            std::min(radius * toDevice.m11(), cut.width() / 2),
                            std::min(radius * toDevice.m22(), cut.height() / 2)};
    limit &= cut;

    Plan p;
    const Planned planned = plan(painter, target, frame, source, limit, &p);
    if (planned != Planned::yes) return planned == Planned::nothing;

    // Each row's columns first: the resampler then goes over each source
    // row once, across every column a device row needs of it.
    spans_.assign(static_cast<std::size_t>(p.height), {});
    for (int y = p.y0; y < p.y0 + p.height; ++y) {
        int from = 0;
        int to = 0;
        if (!RowCoverage::span(shape, y, &from, &to)) continue;
        from = std::max(from, p.x0);
        to = std::min(to, p.x0 + p.width);
        if (to <= from) continue;
        spans_[static_cast<std::size_t>(y - p.y0)] = {from, to};
        resampler_.announce(y, from, to);
    }

    const bool opaque = p.format == QImage::Format_RGB32;
    for (int y = p.y0; y < p.y0 + p.height; ++y) {
        const auto [from, to] = spans_[static_cast<std::size_t>(y - p.y0)];
        if (to <= from) continue;
        if (y + kCanvasRowsAhead < p.y0 + p.height) {
            const auto [aheadFrom, aheadTo] = spans_[static_cast<std::size_t>(y + kCanvasRowsAhead - p.y0)];
            const auto* first = reinterpret_cast<const char*>(into->row(y + kCanvasRowsAhead) + aheadFrom);
            const auto* last = reinterpret_cast<const char*>(into->row(y + kCanvasRowsAhead) + aheadTo);
            for (const char* at = first; at < last; at += 64) __builtin_prefetch(at, 1, 3);
        }
        const RowCoverage row(shape, y);
        const int fullFrom = std::clamp(row.fullFrom, from, to);
        const int fullTo = std::clamp(row.fullTo, fullFrom, to);
        std::uint32_t* out = into->row(y);
        if (fullFrom == from && fullTo == to) {
            // No edge in this row: blended straight in.
            resampler_.blendRow(y, from, to, out, opaque);
            continue;
        }
        const std::uint32_t* in = resampler_.row(y, from, to) - from;
        const auto edge = [&](int x) {
            const std::uint32_t coverage = row.at(x);
            if (coverage == 0) return;
            const std::uint32_t pixel = opaque ? in[x] | 0xff000000u : in[x];
            out[x] = PixelBlend::over(coverage == 255 ? pixel : PixelBlend::scaledBy(pixel, coverage), out[x]);
        };
        for (int x = from; x < fullFrom; ++x) edge(x);
        if (opaque)
            PixelBlend::copyOpaque(in + fullFrom, out + fullFrom, fullTo - fullFrom);
        else
            PixelBlend::sourceOver(in + fullFrom, out + fullFrom, fullTo - fullFrom);
        for (int x = fullTo; x < to; ++x) edge(x);
    }
    return true;
}

void FrameScaler::drawWithin(QPainter& painter, const Outline& outline, QRectF target, const QImage& frame,
                             QRectF source) {
    if (blendInto(painter, outline, target, frame, source)) return;
    painter.save();
    QPainterPath path;
    const double radius = std::isfinite(outline.radius) ? std::max(0.0, outline.radius) : 0.0;
    path.addRoundedRect(outline.rect, radius, radius);
    painter.setClipPath(path, Qt::IntersectClip);
    if (!draw(painter, target, frame, source)) {
        if (source.isNull())
            painter.drawImage(target, frame);
        else
            painter.drawImage(target, frame, source);
    }
    painter.restore();
}

}  // namespace orvane
