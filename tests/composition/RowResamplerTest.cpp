#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "ChannelDifference.h"
#include "paint/PixelBlend.h"
#include "composition/RowResampler.h"

namespace orvane {
namespace row_resampler_test {

// A frame of noise: every pixel unrelated to its neighbours, so that a
// wrong neighbour or weight anywhere shows.
struct Frame {
    int width;
    int height;
    std::vector<std::uint32_t> pixels;

    Frame(int w, int h, unsigned seed) : width(w), height(h), pixels(static_cast<std::size_t>(w) * h) {
        std::mt19937 random(seed);
        for (auto& p : pixels) p = 0xff000000u | (random() & 0xffffffu);
    }
    std::uint32_t at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
    const unsigned char* bits() const { return reinterpret_cast<const unsigned char*>(pixels.data()); }
    long long stride() const { return static_cast<long long>(width) * 4; }
};

// The sample position of device pixel i along an axis, in source pixels,
// held within the axis's pixels: the upper (left) one and how far towards
// the next.
void position(const RowResampler::Axis& a, int i, int* index, double* t) {
    const double at = (a.first + i + 0.5 - a.start) * (a.length / a.extent) + a.from - 0.5;
    const double held = std::clamp(at, double(a.low), double(a.high));
    *index = std::min(static_cast<int>(std::floor(held)), a.high - 1);
    *t = held - *index;
}

// Bilinear filtering in floating point: what the resampler approximates
// with six-bit weights and a rounding after each pass.
std::uint32_t exact(const Frame& f, const RowResampler::Axis& columns, const RowResampler::Axis& rows, int x, int y) {
    int cx = 0, cy = 0;
    double tx = 0, ty = 0;
    position(columns, x - columns.first, &cx, &tx);
    position(rows, y - rows.first, &cy, &ty);
    std::uint32_t out = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const auto c = [&](int px, int py) { return double((f.at(px, py) >> shift) & 0xff); };
        const double top = c(cx, cy) * (1 - tx) + c(cx + 1, cy) * tx;
        const double bottom = c(cx, cy + 1) * (1 - tx) + c(cx + 1, cy + 1) * tx;
        out |= std::uint32_t(std::lround(top * (1 - ty) + bottom * ty)) << shift;
    }
    return out;
}

struct Case {
    std::string name;
    int frameWidth, frameHeight;
    RowResampler::Axis columns, rows;
};

class RowResamplerCases : public testing::TestWithParam<Case> {};

TEST_P(RowResamplerCases, FollowsBilinearFiltering) {
    if (!RowResampler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2";
    const Case& c = GetParam();
    const Frame frame(c.frameWidth, c.frameHeight, 7);
    RowResampler resampler;
    resampler.setUp(frame.bits(), frame.stride(), frame.width, c.columns, c.rows);
    test::ChannelDifference d;
    for (int y = c.rows.first; y < c.rows.first + c.rows.count; ++y) {
        const std::uint32_t* row = resampler.row(y, c.columns.first, c.columns.first + c.columns.count);
        for (int i = 0; i < c.columns.count; ++i) d.add(row[i], exact(frame, c.columns, c.rows, c.columns.first + i, y));
    }
    // Each weight is off by at most half a 64th, and each of the two passes
    // rounds: a few levels on noise at most, about one on average.
    EXPECT_LE(d.worst(), 5) << c.name;
    EXPECT_LT(d.mean(), 1.0) << c.name;
}

TEST_P(RowResamplerCases, AnyOrderAndAnySpanGiveTheSamePixels) {
    if (!RowResampler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2";
    const Case& c = GetParam();
    const Frame frame(c.frameWidth, c.frameHeight, 11);
    const int first = c.columns.first;
    const int end = first + c.columns.count;

    RowResampler whole;
    whole.setUp(frame.bits(), frame.stride(), frame.width, c.columns, c.rows);
    std::vector<std::vector<std::uint32_t>> expected;
    for (int y = c.rows.first; y < c.rows.first + c.rows.count; ++y) {
        const std::uint32_t* row = whole.row(y, first, end);
        expected.emplace_back(row, row + c.columns.count);
    }

    // Rows of a circle's width, some announced and some not, asked for
    // bottom to top.
    RowResampler parts;
    parts.setUp(frame.bits(), frame.stride(), frame.width, c.columns, c.rows);
    const auto spanOf = [&](int k) {
        const double u = (k + 0.5) / c.rows.count * 2 - 1;
        const int half = static_cast<int>(c.columns.count / 2 * std::sqrt(std::max(0.0, 1 - u * u)));
        const int middle = first + c.columns.count / 2;
        return std::pair{std::max(first, middle - half - 1), std::min(end, middle + half + 1)};
    };
    for (int k = 0; k < c.rows.count; k += 2) parts.announce(c.rows.first + k, spanOf(k).first, spanOf(k).second);
    for (int k = c.rows.count - 1; k >= 0; --k) {
        const auto [from, to] = spanOf(k);
        if (to <= from) continue;
        const std::uint32_t* row = parts.row(c.rows.first + k, from, to);
        for (int x = from; x < to; ++x)
            ASSERT_EQ(row[x - from], expected[static_cast<std::size_t>(k)][static_cast<std::size_t>(x - first)])
                << c.name << " at " << x << ", " << c.rows.first + k;
    }
}

TEST_P(RowResamplerCases, BlendsStraightIntoARowAsOverDoes) {
    if (!RowResampler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2";
    const Case& c = GetParam();
    // Translucent in places: premultiplied pixels whose alpha runs from
    // clear to opaque across the frame, opaque elsewhere.
    Frame frame(c.frameWidth, c.frameHeight, 5);
    for (int y = 0; y < frame.height; ++y)
        for (int x = frame.width / 2; x < frame.width; ++x) {
            std::uint32_t& p = frame.pixels[static_cast<std::size_t>(y) * frame.width + x];
            const std::uint32_t a = static_cast<std::uint32_t>((x * 7 + y * 3) % 256);
            p = (a << 24) | (PixelBlend::mul255((p >> 16) & 0xff, a) << 16) |
                (PixelBlend::mul255((p >> 8) & 0xff, a) << 8) | PixelBlend::mul255(p & 0xff, a);
        }
    const int first = c.columns.first;
    const int end = first + c.columns.count;
    for (const bool opaque : {true, false}) {
        RowResampler rows;
        RowResampler blended;
        rows.setUp(frame.bits(), frame.stride(), frame.width, c.columns, c.rows);
        blended.setUp(frame.bits(), frame.stride(), frame.width, c.columns, c.rows);
        for (int y = c.rows.first; y < c.rows.first + c.rows.count; ++y) {
            std::vector<std::uint32_t> expected(static_cast<std::size_t>(end) + 4, 0x80402010u);
            std::vector<std::uint32_t> actual = expected;
            const std::uint32_t* row = rows.row(y, first, end);
            if (opaque)
                PixelBlend::copyOpaque(row, expected.data() + first, end - first);
            else
                PixelBlend::sourceOver(row, expected.data() + first, end - first);
            blended.blendRow(y, first, end, actual.data(), opaque);
            ASSERT_EQ(actual, expected) << c.name << (opaque ? ", opaque" : ", translucent") << ", row " << y;
        }
    }
}

// Axis{first, count, start, extent, from, length, low, high}
INSTANTIATE_TEST_SUITE_P(
    RowResampler, RowResamplerCases,
    testing::Values(
        // A screen at 0.8: neighbours come out of two windows of eight.
        Case{"down to four fifths", 480, 270, {10, 384, 10, 384, 0, 480, 0, 479}, {5, 216, 5, 216, 0, 270, 0, 269}},
        // A camera in a small circle: steeper than a half, gathered.
        Case{"down to under a quarter", 640, 360, {100, 150, 100, 150, 0, 640, 0, 639}, {0, 84, 0, 84, 0, 360, 0, 359}},
        // Upscaled, at fractional places, over device pixels that start
        // before the target and end after it.
        Case{"up and fractional", 90, 60, {0, 301, 3.25, 290.5, 0, 90, 0, 89}, {0, 190, 1.5, 181.7, 0, 60, 0, 59}},
        // Part of the frame reaching its right and bottom edges: the last
        // windows would read past the row.
        Case{"cropped to the edges", 300, 200, {0, 157, 0, 157.3, 171.5, 128.5, 171, 299},
             {0, 120, 0, 120, 40, 160, 40, 199}},
        // A width that leaves a part group at the end.
        Case{"ragged width", 100, 40, {0, 77, 0, 77, 0, 100, 0, 99}, {0, 31, 0, 31, 0, 40, 0, 39}}),
    [](const testing::TestParamInfo<Case>& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

}  // namespace
}  // namespace orvane
