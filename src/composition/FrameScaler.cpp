#include "composition/FrameScaler.h"

#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "composition/ImageBands.h"

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

bool FrameScaler::isAvailable() {
#ifdef ORVANE_FRAME_SCALER_X86
    static const bool available = __builtin_cpu_supports("avx2");
    return available;
#else
    return false;
#endif
}

bool FrameScaler::draw(QPainter& painter, QRectF target, const QImage& frame, QRectF source) {
#ifndef ORVANE_FRAME_SCALER_X86
    (void)painter, (void)target, (void)frame, (void)source;
    return false;
#else
    if (!isAvailable() || !painter.isActive()) return false;
    const QImage::Format format = frame.format();
    if (format != QImage::Format_RGB32 && format != QImage::Format_ARGB32_Premultiplied) return false;
    if (source.isNull()) source = QRectF(QPointF(0, 0), QSizeF(frame.size()));
    // Sampling stays within the source's whole pixels.
    const QRect bounds = source.toAlignedRect() & frame.rect();
    if (bounds.width() < 2 || bounds.height() < 2 || !(source.width() > 0 && source.height() > 0)) return false;
    const QPaintEngine* engine = painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster) return false;
    const QTransform toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale || toDevice.m11() <= 0 || toDevice.m22() <= 0) return false;

    const QRectF placed = toDevice.mapRect(target);
    if (!(placed.width() > 0 && placed.height() > 0)) return true;
    // Only device pixels that can show are computed: those of the target
    // within the clip and the paint device.
    QRectF visible = placed;
    if (painter.hasClipping()) visible &= toDevice.mapRect(painter.clipBoundingRect());
    const QPaintDevice* device = engine->paintDevice();
    if (device && device->devType() == QInternal::Image)
        visible &= QRectF(QPointF(0, 0), QSizeF(static_cast<const QImage*>(device)->size()));
    else if (!painter.hasClipping())
        return false;
    if (!(visible.width() > 0 && visible.height() > 0)) return true;
    const int x0 = static_cast<int>(std::floor(visible.left()));
    const int y0 = static_cast<int>(std::floor(visible.top()));
    const int width = static_cast<int>(std::ceil(visible.right())) - x0;
    const int height = static_cast<int>(std::ceil(visible.bottom())) - y0;
    if (width <= 0 || height <= 0 || width > 32768 || height > 32768) return false;

    column_.resize(static_cast<std::size_t>(width) + 8);
    weights_.resize(static_cast<std::size_t>(width) + 8);
    sampleAxis(x0, width, placed.left(), placed.width(), source.left(), source.width(), bounds.left(),
               bounds.right(), [&](int i, int index, int w) {
        column_[static_cast<std::size_t>(i)] = index;
        weights_[static_cast<std::size_t>(i)] =
            std::uint64_t((w << 8) | (kOne - w)) * 0x0001000100010001ull;
    });
    const int firstColumn = column_.front();
    const int lastColumn = column_[static_cast<std::size_t>(width) - 1] + 1;
    row_.resize(static_cast<std::size_t>(frame.width()));

    // Few rows a band: under a rounded clip each row splits into several
    // spans, and a band must stay under Qt's threshold for handing its
    // blend to the thread pool (see ImageBands.h).
    const int bandRows = std::clamp(kBandBytes / (width * 4), 1, std::min(height, kImageBandRows / 2));
    if (band_.format() != format || band_.width() != width || band_.height() != bandRows)
        band_ = QImage(width, bandRows, format);
    if (band_.isNull()) return false;

    painter.save();
    // Bands are drawn in device pixels: undo whatever the painter adds to
    // its world transform (the device pixel ratio, a view transform).
    painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
    const auto* pixels = frame.constBits();
    const qsizetype stride = frame.bytesPerLine();
    const auto line = [&](int y) { return reinterpret_cast<const std::uint32_t*>(pixels + stride * y); };
    for (int top = 0; top < height; top += bandRows) {
        const int rows = std::min(bandRows, height - top);
        sampleAxis(y0 + top, rows, placed.top(), placed.height(), source.top(), source.height(), bounds.top(),
                   bounds.bottom(), [&](int i, int index, int w) {
            const std::uint32_t* source = line(index);
            // The rows after these are next: ask for them now, as the
            // hardware does not follow a jump from one row to the next.
            if (index + 2 <= bounds.bottom()) prefetchRow(line(index + 2) + firstColumn, lastColumn - firstColumn + 1);
            if (w != 0) {
                blendRows(source + firstColumn, line(index + 1) + firstColumn, row_.data() + firstColumn,
                          lastColumn - firstColumn + 1, w);
                source = row_.data();
            }
            blendColumns(source, column_.data(), weights_.data(), reinterpret_cast<std::uint32_t*>(band_.scanLine(i)),
                         width);
        });
        painter.drawImage(QPointF(x0, y0 + top), band_, QRectF(0, 0, width, rows));
    }
    painter.restore();
    return true;
#endif
}

}  // namespace orvane
