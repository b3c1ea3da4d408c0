#pragma once

#include <cstdint>
#include <vector>

namespace orvane {

// Bilinear resampling of a 32-bit frame onto a block of device pixels, one
// device row at a time, like a smooth QPainter::drawImage.
//
// Each source row is resampled across once, into one of two rows kept in
// the cache, and each device row is then a blend of two of those. So the
// frame is read once, front to back, which the memory keeps up with, and
// the device row comes out ready to be written where it belongs. Across a
// row, each group of four device pixels whose neighbours lie within eight
// source pixels (any scale down to a half) is picked out of one plain load
// by permutes; steeper scales gather the pixels one by one.
//
// Weights are in 64ths and every pass rounds to whole levels, so a pixel
// may differ from Qt's by a level or two. Written for AVX2 (isAvailable);
// without it the same arithmetic runs a pixel at a time.
class RowResampler {
public:
    // How device pixels [first, first + count) along one axis map to the
    // source: the source span from `from` to `from + length` (source pixels)
    // lies from `start` to `start + extent` (device pixels), and sampling
    // stays within source pixels [low, high].
    struct Axis {
        int first = 0;
        int count = 0;
        double start = 0;
        double extent = 1;
        double from = 0;
        double length = 1;
        int low = 0;
        int high = 0;
    };

    static bool isAvailable();

    // `pixels` is the frame's first row, `stride` bytes apart, `width`
    // pixels wide. Forgets the rows of any frame before.
    void setUp(const unsigned char* pixels, long long stride, int width, const Axis& columns, const Axis& rows);

    // Tells ahead that device row y will be asked for columns [from, to):
    // the source rows under it are then resampled once, over every column
    // any of their device rows needs. Rows not announced are resampled over
    // what is asked.
    void announce(int y, int from, int to);

    // Device row y, columns [from, to) within the columns set up: a pointer
    // p with p[0] the pixel at `from`. Valid until the next call. Rows are
    // best asked for top to bottom.
    const std::uint32_t* row(int y, int from, int to);

    // Device row y, columns [from, to), blended source-over straight into
    // `out` (indexed by device column): the row is not kept anywhere in
    // between. With `opaque` the frame's alpha bytes are taken as opaque,
    // as an RGB32 image's are.
    void blendRow(int y, int from, int to, std::uint32_t* out, bool opaque);

private:
    // Eight device columns: their left source pixels are lanes of two
    // windows of eight pixels (left[0] for lanes 0 to 3, left[1] for 4 to
    // 7), or, with lane[0] == kGather, fetched one by one.
    struct Group {
        std::int32_t left[2];
        std::uint8_t lane[8];
    };
    static constexpr std::uint8_t kGather = 0xff;

    struct Span {
        int from = 0;  // groups
        int to = 0;
        bool covers(Span s) const { return from <= s.from && s.to <= to; }
    };

    Span groupsOf(int from, int to) const;
    // The two source rows under device row y resampled across, with the
    // lower one's weight; lower is null when the upper alone is the row.
    void sourcesOf(int y, int from, int to, const std::uint32_t** upper, const std::uint32_t** lower, int* w);
    // Source row r resampled across over at least `need`.
    const std::uint32_t* across(int r, Span need);

    const unsigned char* pixels_ = nullptr;
    long long stride_ = 0;
    Axis columns_;
    Axis rows_;

    std::vector<Group> groups_;
    std::vector<std::int32_t> column_;     // per device column: left source pixel
    std::vector<std::uint64_t> weights_;   // per device column: (64 - w, w) byte pairs, four times;
                                           // within a group in the order 0 1 4 5 2 3 6 7
    std::vector<std::int32_t> rowIndex_;   // per device row: upper source row
    std::vector<std::int32_t> rowWeight_;  // per device row: weight of the lower, in 64ths
    std::vector<Span> announced_;          // per source row from rows_.low

    std::vector<std::uint32_t> across_[2];  // source rows resampled across, by parity
    int acrossRow_[2] = {-1, -1};
    Span acrossSpan_[2];
    std::vector<std::uint32_t> blended_;
};

}  // namespace orvane
