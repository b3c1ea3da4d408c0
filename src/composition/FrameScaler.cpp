#include "composition/FrameScaler.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "composition/ImageBands.h"
#include "composition/PixelBlend.h"
#include "composition/PlainImageTarget.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define ORVANE_FRAME_SCALER_X86 1
#endif

namespace orvane {

namespace {

// Weights are in 64ths: small enough for the signed bytes of the
// multiply-add, fine enough that no step shows.
constexpr int kOne = 64;
constexpr int kShift = 6;

// Rows of a band: enough to keep the per-band overhead small, few enough to
// stay in the cache until Qt draws them.
constexpr int kBandBytes = 128 * 1024;

std::uint32_t lerp(std::uint32_t a, std::uint32_t b, int w) {
    std::uint32_t out = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t ca = (a >> shift) & 0xff;
        const std::uint32_t cb = (b >> shift) & 0xff;
        out |= ((ca * std::uint32_t(kOne - w) + cb * std::uint32_t(w) + kOne / 2) >> kShift) << shift;
    }
    return out;
}

#ifdef ORVANE_FRAME_SCALER_X86

// out[i] = a[i] blended towards b[i] by w / 64, per channel.
__attribute__((target("avx2"))) void blendRows(const std::uint32_t* a, const std::uint32_t* b, std::uint32_t* out,
                                               int count, int w) {
    const __m256i weights = _mm256_set1_epi16(static_cast<short>((w << 8) | (kOne - w)));
    const __m256i round = _mm256_set1_epi16(kOne / 2);
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i va = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i));
        const __m256i vb = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + i));
        __m256i lo = _mm256_maddubs_epi16(_mm256_unpacklo_epi8(va, vb), weights);
        __m256i hi = _mm256_maddubs_epi16(_mm256_unpackhi_epi8(va, vb), weights);
        lo = _mm256_srli_epi16(_mm256_add_epi16(lo, round), kShift);
        hi = _mm256_srli_epi16(_mm256_add_epi16(hi, round), kShift);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_packus_epi16(lo, hi));
    }
    for (; i < count; ++i) out[i] = lerp(a[i], b[i], w);
}

// out[i] = row[column[i]] blended towards row[column[i] + 1] by the weights
// of output pixel i.
__attribute__((target("avx2"))) void blendColumns(const std::uint32_t* row, const std::int32_t* column,
                                                  const std::uint64_t* weights, std::uint32_t* out, int count) {
    // Each gathered 64 bits hold two neighbours p, q; interleave their bytes
    // as p.b q.b p.g q.g ... for the multiply-add.
    const __m256i interleave = _mm256_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15,  //
                                                0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15);
    const __m256i round = _mm256_set1_epi16(kOne / 2);
    // Neighbour pairs are fetched with plain 64-bit loads: gather
    // instructions are slow on many processors.
    const auto pair = [row](std::int32_t at) {
        long long v;
        std::memcpy(&v, row + at, sizeof v);
        return v;
    };
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const std::int32_t* at = column + i;
        const __m256i p0 = _mm256_setr_epi64x(pair(at[0]), pair(at[1]), pair(at[2]), pair(at[3]));
        const __m256i p1 = _mm256_setr_epi64x(pair(at[4]), pair(at[5]), pair(at[6]), pair(at[7]));
        const __m256i w0 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(weights + i));
        const __m256i w1 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(weights + i + 4));
        __m256i r0 = _mm256_maddubs_epi16(_mm256_shuffle_epi8(p0, interleave), w0);
        __m256i r1 = _mm256_maddubs_epi16(_mm256_shuffle_epi8(p1, interleave), w1);
        r0 = _mm256_srli_epi16(_mm256_add_epi16(r0, round), kShift);
        r1 = _mm256_srli_epi16(_mm256_add_epi16(r1, round), kShift);
        // packus works within 128-bit lanes: put the four 64-bit pairs back in order.
        const __m256i packed = _mm256_permute4x64_epi64(_mm256_packus_epi16(r0, r1), _MM_SHUFFLE(3, 1, 2, 0));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), packed);
    }
    for (; i < count; ++i) {
        const int w = static_cast<int>((weights[i] >> 8) & 0xff);
        out[i] = lerp(row[column[i]], row[column[i] + 1], w);
    }
}

void prefetchRow(const std::uint32_t* row, int count) {
    const auto* bytes = reinterpret_cast<const char*>(row);
    for (int offset = 0; offset < count * 4; offset += 64) _mm_prefetch(bytes + offset, _MM_HINT_T0);
}


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

#endif

// For output pixels [first, first + count) along an axis on which the
// source span from `from` to `from + length` (source pixels) lies from
// `start` to `start + extent` (device pixels): the left (upper) source pixel
// of each, and the weight of its neighbour in 64ths, sampled at pixel
// centres and held within the pixels [low, high] as Qt does.
template <typename Store>
void sampleAxis(int first, int count, double start, double extent, double from, double length, int low, int high,
                Store store) {
    const double step = length / extent;
    for (int i = 0; i < count; ++i) {
        const double at = (first + i + 0.5 - start) * step + from - 0.5;
        int index = static_cast<int>(std::floor(at));
        int w = static_cast<int>(std::lround((at - index) * kOne));
        if (w == kOne) ++index, w = 0;
        if (index < low) index = low, w = 0;
        if (index > high - 1) index = high - 1, w = kOne;
        store(i, index, w);
    }
}

}  // namespace

struct FrameScaler::Plan {
    QRectF placed;  // the target in device pixels
    QRectF source;
    QRect bounds;   // the source pixels sampled
    QImage::Format format = QImage::Format_Invalid;
    int x0 = 0, y0 = 0, width = 0, height = 0;  // the device pixels computed
    const uchar* pixels = nullptr;
    qsizetype stride = 0;
};

bool FrameScaler::isAvailable() {
#ifdef ORVANE_FRAME_SCALER_X86
    static const bool available = __builtin_cpu_supports("avx2");
    return available;
#else
    return false;
#endif
}

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

    column_.resize(static_cast<std::size_t>(width) + 8);
    weights_.resize(static_cast<std::size_t>(width) + 8);
    sampleAxis(x0, width, placed.left(), placed.width(), source.left(), source.width(), bounds.left(),
               bounds.right(), [&](int i, int index, int w) {
        column_[static_cast<std::size_t>(i)] = index;
        weights_[static_cast<std::size_t>(i)] = std::uint64_t((w << 8) | (kOne - w)) * 0x0001000100010001ull;
    });
    row_.resize(static_cast<std::size_t>(frame.width()));
    *out = Plan{placed, source, bounds, format, x0, y0, width, height, frame.constBits(), frame.bytesPerLine()};
    return Planned::yes;
}

void FrameScaler::resampleRow(const Plan& p, int y, int from, int to, std::uint32_t* out) {
#ifdef ORVANE_FRAME_SCALER_X86
    const auto line = [&](int row) { return reinterpret_cast<const std::uint32_t*>(p.pixels + p.stride * row); };
    const std::size_t first = static_cast<std::size_t>(from - p.x0);
    const int count = to - from;
    const int firstColumn = column_[first];
    const int lastColumn = column_[first + static_cast<std::size_t>(count) - 1] + 1;
    sampleAxis(y, 1, p.placed.top(), p.placed.height(), p.source.top(), p.source.height(), p.bounds.top(),
               p.bounds.bottom(), [&](int, int index, int w) {
        const std::uint32_t* source = line(index);
        // The rows after these are next: ask for them now, as the hardware
        // does not follow a jump from one row to the next.
        if (index + 2 <= p.bounds.bottom()) prefetchRow(line(index + 2) + firstColumn, lastColumn - firstColumn + 1);
        if (w != 0) {
            blendRows(source + firstColumn, line(index + 1) + firstColumn, row_.data() + firstColumn,
                      lastColumn - firstColumn + 1, w);
            source = row_.data();
        }
        blendColumns(source, column_.data() + first, weights_.data() + first, out, count);
    });
#else
    (void)p, (void)y, (void)from, (void)to, (void)out;
#endif
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
            resampleRow(p, p.y0 + top + i, p.x0, p.x0 + p.width, reinterpret_cast<std::uint32_t*>(band_.scanLine(i)));
        painter.drawImage(QPointF(p.x0, p.y0 + top), band_, QRectF(0, 0, p.width, rows));
    }
    painter.restore();
    return true;
}

bool FrameScaler::blendInto(QPainter& painter, const Outline& outline, QRectF target, const QImage& frame,
                            QRectF source) {
#ifndef ORVANE_FRAME_SCALER_X86
    (void)painter, (void)outline, (void)target, (void)frame, (void)source;
    return false;
#else
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

    line_.resize(static_cast<std::size_t>(p.width));
    const bool opaque = p.format == QImage::Format_RGB32;
    for (int y = p.y0; y < p.y0 + p.height; ++y) {
        const RowCoverage row(shape, y);
        if (row.empty()) continue;
        const int from = std::max(row.from, p.x0);
        const int to = std::min(row.to, p.x0 + p.width);
        if (to <= from) continue;
        const int fullFrom = std::clamp(row.fullFrom, from, to);
        const int fullTo = std::clamp(row.fullTo, fullFrom, to);
        resampleRow(p, y, from, to, line_.data());
        std::uint32_t* out = into->row(y);
        const std::uint32_t* in = line_.data() - from;
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
#endif
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
