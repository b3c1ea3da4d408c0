#include "composition/RowResampler.h"

#include "paint/PixelBlend.h"

#include <algorithm>
#include <cmath>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define ORVANE_ROW_RESAMPLER_X86 1
#endif

namespace orvane {

namespace {

// Weights are in 64ths: small enough for the signed bytes of the
// multiply-add, fine enough that no step shows.
constexpr int kOne = 64;
constexpr int kShift = 6;

// How many source rows ahead the memory is asked for the next rows.
constexpr int kRowsAhead = 3;

std::uint32_t lerp(std::uint32_t a, std::uint32_t b, int w) {
    std::uint32_t out = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t ca = (a >> shift) & 0xff;
        const std::uint32_t cb = (b >> shift) & 0xff;
        out |= ((ca * std::uint32_t(kOne - w) + cb * std::uint32_t(w) + kOne / 2) >> kShift) << shift;
    }
    return out;
}

int weightOf(std::uint64_t pair) { return static_cast<int>((pair >> 8) & 0xff); }

// Sample positions along one axis: for each device pixel the upper (left)
// source pixel and the weight of the next one in 64ths, sampled at pixel
// centres and held within [low, high] as Qt does.
template <typename Store>
void sampleAxis(const RowResampler::Axis& a, Store store) {
    const double step = a.length / a.extent;
    for (int i = 0; i < a.count; ++i) {
        const double at = (a.first + i + 0.5 - a.start) * step + a.from - 0.5;
        int index = static_cast<int>(std::floor(at));
        int w = static_cast<int>(std::lround((at - index) * kOne));
        if (w == kOne) ++index, w = 0;
        if (index < a.low) index = a.low, w = 0;
        if (index > a.high - 1) index = a.high - 1, w = kOne;
        store(i, index, w);
    }
}

#ifdef ORVANE_ROW_RESAMPLER_X86

// Eight pixels of a blended towards the eight of b by (64 - w, w) byte
// pairs: pixels 0 1 4 5 by wLow's, 2 3 6 7 by wHigh's (the halves of the
// two 128-bit lanes that the unpacks take).
__attribute__((target("avx2"))) inline __m256i blendPairs(__m256i a, __m256i b, __m256i wLow, __m256i wHigh) {
    const __m256i round = _mm256_set1_epi16(kOne / 2);
    __m256i lo = _mm256_maddubs_epi16(_mm256_unpacklo_epi8(a, b), wLow);
    __m256i hi = _mm256_maddubs_epi16(_mm256_unpackhi_epi8(a, b), wHigh);
    lo = _mm256_srli_epi16(_mm256_add_epi16(lo, round), kShift);
    hi = _mm256_srli_epi16(_mm256_add_epi16(hi, round), kShift);
    return _mm256_packus_epi16(lo, hi);
}

// out[i] = a[i] blended towards b[i] by w / 64, per channel.
__attribute__((target("avx2"))) void blendRows(const std::uint32_t* a, const std::uint32_t* b, std::uint32_t* out,
                                               int count, int w) {
    const __m256i weights = _mm256_set1_epi16(static_cast<short>((w << 8) | (kOne - w)));
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i va = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i));
        const __m256i vb = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + i));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), blendPairs(va, vb, weights, weights));
    }
    for (; i < count; ++i) out[i] = lerp(a[i], b[i], w);
}

// out[i] = (a[i] blended towards b[i] by w / 64) over out[i]: stored as it
// is where it is opaque (always, with `opaque`), blended where not.
__attribute__((target("avx2"))) void blendRowsOver(const std::uint32_t* a, const std::uint32_t* b, std::uint32_t* out,
                                                   int count, int w, bool opaque) {
    const __m256i weights = _mm256_set1_epi16(static_cast<short>((w << 8) | (kOne - w)));
    const __m256i alpha = _mm256_set1_epi32(static_cast<int>(0xff000000u));
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i va = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i));
        const __m256i vb = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + i));
        __m256i pixels = blendPairs(va, vb, weights, weights);
        if (opaque) {
            pixels = _mm256_or_si256(pixels, alpha);
        } else if (_mm256_movemask_epi8(_mm256_cmpeq_epi32(_mm256_and_si256(pixels, alpha), alpha)) != -1) {
            alignas(32) std::uint32_t some[8];
            _mm256_store_si256(reinterpret_cast<__m256i*>(some), pixels);
            PixelBlend::sourceOver(some, out + i, 8);
            continue;
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), pixels);
    }
    for (; i < count; ++i) {
        const std::uint32_t pixel = lerp(a[i], b[i], w);
        out[i] = opaque ? pixel | 0xff000000u : PixelBlend::over(pixel, out[i]);
    }
}

// Groups [from, to) of a source row resampled across into out (eight
// pixels a group, from the group's first column).
template <typename Group>
__attribute__((target("avx2"))) void acrossGroups(const std::uint32_t* row, const Group* groups,
                                                  const std::int32_t* column, const std::uint64_t* weights,
                                                  std::uint32_t* out, int from, int to, std::uint8_t gather,
                                                  const std::uint32_t* later) {
    const __m256i one = _mm256_set1_epi32(1);
    for (int g = from; g < to; ++g) {
        const Group& group = groups[g];
        // The same pixels of a later row, asked for as this one is read.
        if (later) {
            _mm_prefetch(reinterpret_cast<const char*>(later + group.left[0]), _MM_HINT_T1);
            _mm_prefetch(reinterpret_cast<const char*>(later + group.left[1] + 4), _MM_HINT_T1);
        }
        __m256i left;
        __m256i right;
        if (group.lane[0] != gather) {
            const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(row + group.left[0]));
            const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(row + group.left[1]));
            const __m256i at = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(group.lane)));
            const __m256i next = _mm256_add_epi32(at, one);
            left = _mm256_blend_epi32(_mm256_permutevar8x32_epi32(a, at), _mm256_permutevar8x32_epi32(b, at), 0xf0);
            right = _mm256_blend_epi32(_mm256_permutevar8x32_epi32(a, next), _mm256_permutevar8x32_epi32(b, next),
                                       0xf0);
        } else {
            const __m256i at = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(column + 8 * g));
            const auto* base = reinterpret_cast<const int*>(row);
            left = _mm256_i32gather_epi32(base, at, 4);
            right = _mm256_i32gather_epi32(base, _mm256_add_epi32(at, one), 4);
        }
        // Byte pairs (left, right) per channel: pixels 0 1 4 5 from the low
        // halves of the two lanes, 2 3 6 7 from the high, as the weights lie.
        const __m256i wLow = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(weights + 8 * g));
        const __m256i wHigh = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(weights + 8 * g + 4));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 8 * g), blendPairs(left, right, wLow, wHigh));
    }
}

#endif

// Where column j of a group keeps its weights.
constexpr int kWeightSlot[8] = {0, 1, 4, 5, 2, 3, 6, 7};

}  // namespace

bool RowResampler::isAvailable() {
#ifdef ORVANE_ROW_RESAMPLER_X86
    static const bool available = __builtin_cpu_supports("avx2");
    return available;
#else
    return false;
#endif
}

void RowResampler::setUp(const unsigned char* pixels, long long stride, int width, const Axis& columns,
                         const Axis& rows) {
    pixels_ = pixels;
    stride_ = stride;
    columns_ = columns;
    rows_ = rows;

    const int groups = (columns.count + 7) / 8;
    const std::size_t padded = static_cast<std::size_t>(groups) * 8;
    column_.assign(padded, 0);
    weights_.assign(padded, 0);
    sampleAxis(columns, [&](int i, int index, int w) {
        column_[static_cast<std::size_t>(i)] = index;
        const std::size_t slot = static_cast<std::size_t>(i / 8 * 8 + kWeightSlot[i % 8]);
        weights_[slot] = std::uint64_t((w << 8) | (kOne - w)) * 0x0001000100010001ull;
    });
    // The columns past the last are computed with the others and never
    // shown: they sample the last pixel, within the frame.
    for (std::size_t i = static_cast<std::size_t>(columns.count); i < padded; ++i)
        column_[i] = columns.count > 0 ? column_[static_cast<std::size_t>(columns.count) - 1] : columns.low;

    groups_.resize(static_cast<std::size_t>(groups));
    for (int g = 0; g < groups; ++g) {
        Group& group = groups_[static_cast<std::size_t>(g)];
        const std::int32_t* at = column_.data() + 8 * g;
        group.left[0] = at[0];
        group.left[1] = at[4];
        bool windowed = group.left[0] + 8 <= width && group.left[1] + 8 <= width;
        for (int j = 0; j < 8; ++j) {
            const int lane = at[j] - group.left[j / 4];
            windowed = windowed && lane >= 0 && lane + 1 < 8;
            group.lane[j] = static_cast<std::uint8_t>(lane);
        }
        if (!windowed) group.lane[0] = kGather;
    }

    rowIndex_.resize(static_cast<std::size_t>(rows.count));
    rowWeight_.resize(static_cast<std::size_t>(rows.count));
    sampleAxis(rows, [&](int i, int index, int w) {
        rowIndex_[static_cast<std::size_t>(i)] = index;
        rowWeight_[static_cast<std::size_t>(i)] = w;
    });
    announced_.assign(static_cast<std::size_t>(std::max(0, rows.high - rows.low + 1)), Span{});
    for (int slot = 0; slot < 2; ++slot) {
        across_[slot].resize(padded);
        acrossRow_[slot] = -1;
    }
    blended_.resize(padded);
}

RowResampler::Span RowResampler::groupsOf(int from, int to) const {
    const int groups = static_cast<int>(groups_.size());
    return {std::clamp((from - columns_.first) / 8, 0, groups), std::clamp((to - columns_.first + 7) / 8, 0, groups)};
}

void RowResampler::announce(int y, int from, int to) {
    const int k = y - rows_.first;
    if (k < 0 || k >= rows_.count || to <= from) return;
    const Span need = groupsOf(from, to);
    const auto add = [&](int r) {
        Span& s = announced_[static_cast<std::size_t>(r - rows_.low)];
        s = s.from == s.to ? need : Span{std::min(s.from, need.from), std::max(s.to, need.to)};
    };
    const int index = rowIndex_[static_cast<std::size_t>(k)];
    const int w = rowWeight_[static_cast<std::size_t>(k)];
    if (w != kOne) add(index);
    if (w != 0) add(index + 1);
}

const std::uint32_t* RowResampler::across(int r, Span need) {
    const int slot = r & 1;
    std::uint32_t* out = across_[slot].data();
    if (acrossRow_[slot] == r && acrossSpan_[slot].covers(need)) return out;
    Span span = need;
    const Span announced = announced_[static_cast<std::size_t>(r - rows_.low)];
    if (announced.from != announced.to)
        span = {std::min(span.from, announced.from), std::max(span.to, announced.to)};
    if (acrossRow_[slot] == r)
        span = {std::min(span.from, acrossSpan_[slot].from), std::max(span.to, acrossSpan_[slot].to)};
    const auto line = [&](int row) { return reinterpret_cast<const std::uint32_t*>(pixels_ + stride_ * row); };

#ifdef ORVANE_ROW_RESAMPLER_X86
    // A later row is asked for while this one is read: a row of a scaled
    // frame is read in part, and rows apart, which the hardware does not
    // foresee in time.
    const std::uint32_t* later = r + kRowsAhead <= rows_.high ? line(r + kRowsAhead) : nullptr;
    if (isAvailable()) {
        acrossGroups(line(r), groups_.data(), column_.data(), weights_.data(), out, span.from, span.to, kGather,
                     later);
        acrossRow_[slot] = r;
        acrossSpan_[slot] = span;
        return out;
    }
#endif
    const std::uint32_t* source = line(r);
    for (int i = span.from * 8; i < span.to * 8; ++i) {
        const std::size_t at = static_cast<std::size_t>(i);
        const std::int32_t c = column_[at];
        out[at] = lerp(source[c], source[c + 1], weightOf(weights_[at / 8 * 8 + kWeightSlot[at % 8]]));
    }
    acrossRow_[slot] = r;
    acrossSpan_[slot] = span;
    return out;
}

void RowResampler::sourcesOf(int y, int from, int to, const std::uint32_t** upper, const std::uint32_t** lower,
                             int* w) {
    const std::size_t k = static_cast<std::size_t>(y - rows_.first);
    const int index = rowIndex_[k];
    *w = rowWeight_[k];
    const Span need = groupsOf(from, to);
    const int offset = from - columns_.first;
    *lower = nullptr;
    if (*w == 0) {
        *upper = across(index, need) + offset;
    } else if (*w == kOne) {
        *upper = across(index + 1, need) + offset;
    } else {
        *upper = across(index, need) + offset;
        *lower = across(index + 1, need) + offset;
    }
}

const std::uint32_t* RowResampler::row(int y, int from, int to) {
    const std::uint32_t* upper = nullptr;
    const std::uint32_t* lower = nullptr;
    int w = 0;
    sourcesOf(y, from, to, &upper, &lower, &w);
    if (!lower) return upper;
#ifdef ORVANE_ROW_RESAMPLER_X86
    if (isAvailable()) {
        blendRows(upper, lower, blended_.data(), to - from, w);
        return blended_.data();
    }
#endif
    for (int i = 0; i < to - from; ++i) blended_[static_cast<std::size_t>(i)] = lerp(upper[i], lower[i], w);
    return blended_.data();
}

void RowResampler::blendRow(int y, int from, int to, std::uint32_t* out, bool opaque) {
    if (to <= from) return;
    const std::uint32_t* upper = nullptr;
    const std::uint32_t* lower = nullptr;
    int w = 0;
    sourcesOf(y, from, to, &upper, &lower, &w);
#ifdef ORVANE_ROW_RESAMPLER_X86
    if (lower && isAvailable()) {
        blendRowsOver(upper, lower, out + from, to - from, w, opaque);
        return;
    }
#endif
    if (lower) upper = row(y, from, to);
    if (opaque)
        PixelBlend::copyOpaque(upper, out + from, to - from);
    else
        PixelBlend::sourceOver(upper, out + from, to - from);
}

}  // namespace orvane
