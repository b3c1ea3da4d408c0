#include "paint/FastBlur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace orvane {

namespace {

// Target standard deviation, in pixels of the reduced picture.
constexpr double kReducedSigma = 2.0;
constexpr int kMaxSamples = 4;  // per axis, per reduced pixel
constexpr int kMaxReduced = 4096;

// Widths of three box passes whose combination approximates a Gaussian of
// standard deviation sigma.
std::array<int, 3> boxWidths(double sigma) {
    const int n = 3;
    const double ideal = std::sqrt(12 * sigma * sigma / n + 1);
    int wl = static_cast<int>(std::floor(ideal));
    if (wl % 2 == 0) --wl;
    wl = std::max(wl, 1);
    const int wu = wl + 2;
    const double mIdeal = (12 * sigma * sigma - n * wl * wl - 4 * n * wl - 3 * n) / (-4.0 * wl - 4);
    const int m = static_cast<int>(std::lround(mIdeal));
    std::array<int, 3> out{};
    for (int i = 0; i < n; ++i) out[i] = i < m ? wl : wu;
    return out;
}

// One box pass over `count` pixels spaced `stride` pixels apart, with
// transparent pixels beyond both ends. `line` is read and written; `scratch`
// holds a copy of the input.
void boxLine(std::uint32_t* line, int count, int stride, int radius, std::uint32_t* scratch) {
    for (int i = 0; i < count; ++i) scratch[i] = line[static_cast<std::ptrdiff_t>(i) * stride];
    const std::uint32_t window = 2 * radius + 1;
    const std::uint64_t mul = (std::uint64_t(1) << 32) / window;
    constexpr std::uint64_t half = std::uint64_t(1) << 31;
    std::uint32_t sa = 0, sr = 0, sg = 0, sb = 0;
    const auto add = [&](std::uint32_t p) {
        sa += p >> 24;
        sr += (p >> 16) & 0xff;
        sg += (p >> 8) & 0xff;
        sb += p & 0xff;
    };
    const auto sub = [&](std::uint32_t p) {
        sa -= p >> 24;
        sr -= (p >> 16) & 0xff;
        sg -= (p >> 8) & 0xff;
        sb -= p & 0xff;
    };
    for (int i = 0; i <= std::min(radius, count - 1); ++i) add(scratch[i]);
    std::uint32_t* out = line;
    for (int x = 0; x < count; ++x, out += stride) {
        *out = static_cast<std::uint32_t>(((sa * mul + half) >> 32) << 24 | ((sr * mul + half) >> 32) << 16 |
                                          ((sg * mul + half) >> 32) << 8 | ((sb * mul + half) >> 32));
        const int in = x + radius + 1;
        if (in < count) add(scratch[in]);
        const int gone = x - radius;
        if (gone >= 0) sub(scratch[gone]);
    }
}

// Area-averaging reduction by sampling a grid of at most 4 by 4 points in
// each destination pixel's footprint.
QImage reduce(const QImage& src, QSize size) {
    QImage out(size, QImage::Format_ARGB32_Premultiplied);
    if (out.isNull()) return out;
    const int sw = src.width();
    const int sh = src.height();
    const int nx = std::clamp(static_cast<int>(std::ceil(double(sw) / size.width())), 1, kMaxSamples);
    const int ny = std::clamp(static_cast<int>(std::ceil(double(sh) / size.height())), 1, kMaxSamples);
    std::vector<int> columns(static_cast<std::size_t>(size.width()) * nx);
    for (int x = 0; x < size.width(); ++x)
        for (int i = 0; i < nx; ++i) {
            const double fx = (x + (i + 0.5) / nx) * sw / size.width();
            columns[x * nx + i] = std::clamp(static_cast<int>(fx), 0, sw - 1);
        }
    const int samples = nx * ny;
    const std::uint32_t mul = (1u << 16) / samples;
    for (int y = 0; y < size.height(); ++y) {
        const std::uint32_t* rows[kMaxSamples];
        for (int j = 0; j < ny; ++j) {
            const double fy = (y + (j + 0.5) / ny) * sh / size.height();
            rows[j] = reinterpret_cast<const std::uint32_t*>(src.constScanLine(std::clamp(static_cast<int>(fy), 0, sh - 1)));
        }
        auto* dst = reinterpret_cast<std::uint32_t*>(out.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            std::uint32_t a = 0, r = 0, g = 0, b = 0;
            for (int j = 0; j < ny; ++j)
                for (int i = 0; i < nx; ++i) {
                    const std::uint32_t p = rows[j][columns[x * nx + i]];
                    a += p >> 24;
                    r += (p >> 16) & 0xff;
                    g += (p >> 8) & 0xff;
                    b += p & 0xff;
                }
            dst[x] = (((a * mul) >> 16) << 24) | (((r * mul) >> 16) << 16) | (((g * mul) >> 16) << 8) |
                     ((b * mul) >> 16);
        }
    }
    return out;
}

}  // namespace

void FastBlur::blurInPlace(QImage& image, double sigma) {
    if (image.isNull() || !std::isfinite(sigma) || sigma < 0.3) return;
    if (image.format() != QImage::Format_ARGB32_Premultiplied)
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int w = image.width();
    const int h = image.height();
    const int stride = static_cast<int>(image.bytesPerLine() / 4);
    std::vector<std::uint32_t> scratch(static_cast<std::size_t>(std::max(w, h)));
    auto* bits = reinterpret_cast<std::uint32_t*>(image.bits());
    // Beyond the picture's own size a wider blur changes nothing but cost.
    sigma = std::min(sigma, double(std::max(w, h)));
    for (int width : boxWidths(sigma)) {
        const int radius = (width - 1) / 2;
        if (radius <= 0) continue;
        for (int y = 0; y < h; ++y) boxLine(bits + static_cast<std::size_t>(y) * stride, w, 1, radius, scratch.data());
        for (int x = 0; x < w; ++x) boxLine(bits + x, h, stride, radius, scratch.data());
    }
}

FastBlur::Blurred FastBlur::blur(const QImage& source, QSizeF drawnSize, double sigma) {
    if (source.isNull() || !std::isfinite(sigma) || !std::isfinite(drawnSize.width()) ||
        !std::isfinite(drawnSize.height()) || drawnSize.width() < 1 || drawnSize.height() < 1 || sigma < 0.5)
        return {};
    const QImage* src = &source;
    QImage converted;
    if (source.format() != QImage::Format_ARGB32_Premultiplied && source.format() != QImage::Format_RGB32 &&
        source.format() != QImage::Format_ARGB32) {
        converted = source.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        src = &converted;
    } else if (source.format() == QImage::Format_ARGB32 && !source.isNull()) {
        converted = source.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        src = &converted;
    }
    const double factor = std::max(2.0, std::floor(sigma / kReducedSigma));
    const QSize reduced(std::max(1, static_cast<int>(std::ceil(drawnSize.width() / factor))),
                        std::max(1, static_cast<int>(std::ceil(drawnSize.height() / factor))));
    // A picture drawn far larger than any screen gains nothing from a finer
    // blur; past that size it is not blurred at all.
    if (reduced.width() > kMaxReduced || reduced.height() > kMaxReduced) return {};
    const QImage small = reduce(*src, reduced);
    if (small.isNull()) return {};
    // The reduction itself averages over about one reduced pixel, so the
    // remaining spread is a little less than sigma / factor.
    const double reducedSigma = std::sqrt(std::max(0.0, (sigma / factor) * (sigma / factor) - 0.25));
    // Each box pass spreads the picture outwards; a transparent margin as
    // wide as all passes together keeps that spread for the next pass, so
    // the edges fall off like the Gaussian's and not faster.
    int pad = 0;
    for (int width : boxWidths(reducedSigma)) pad += (width - 1) / 2;
    QImage padded(reduced + QSize(2 * pad, 2 * pad), QImage::Format_ARGB32_Premultiplied);
    if (padded.isNull()) return {};
    padded.fill(Qt::transparent);
    for (int y = 0; y < reduced.height(); ++y)
        std::memcpy(padded.scanLine(y + pad) + pad * 4, small.constScanLine(y), static_cast<std::size_t>(reduced.width()) * 4);
    blurInPlace(padded, reducedSigma);
    // Kept with its margin: drawn back, the soft edge then has real pixels on
    // both sides to interpolate between.
    const double sx = drawnSize.width() / reduced.width();
    const double sy = drawnSize.height() / reduced.height();
    return {std::move(padded), QMarginsF(pad * sx, pad * sy, pad * sx, pad * sy)};
}

}  // namespace orvane
