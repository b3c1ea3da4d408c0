#include "paint/PixelBlend.h"

#include <algorithm>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define ORVANE_PIXEL_BLEND_X86 1
#endif

namespace orvane::PixelBlend {

namespace {

#ifdef ORVANE_PIXEL_BLEND_X86

bool hasAvx2() {
    static const bool available = __builtin_cpu_supports("avx2");
    return available;
}

__attribute__((target("avx2"))) int copyOpaqueAvx2(const std::uint32_t* src, std::uint32_t* dst, int count) {
    const __m256i alpha = _mm256_set1_epi32(static_cast<int>(0xff000000u));
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i s = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + i));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), _mm256_or_si256(s, alpha));
    }
    return i;
}

__attribute__((target("avx2"))) int sourceOverAvx2(const std::uint32_t* src, std::uint32_t* dst, int count) {
    const __m256i alpha = _mm256_set1_epi32(static_cast<int>(0xff000000u));
    const __m256i zero = _mm256_setzero_si256();
    const __m256i half = _mm256_set1_epi16(128);
    // The alpha byte of each pixel, spread over that pixel's four 16-bit
    // channels: pixels 0 and 1 of each 128-bit lane, then 2 and 3.
    const __m256i low = _mm256_setr_epi8(3, -1, 3, -1, 3, -1, 3, -1, 7, -1, 7, -1, 7, -1, 7, -1,  //
                                         3, -1, 3, -1, 3, -1, 3, -1, 7, -1, 7, -1, 7, -1, 7, -1);
    const __m256i high = _mm256_setr_epi8(11, -1, 11, -1, 11, -1, 11, -1, 15, -1, 15, -1, 15, -1, 15, -1,  //
                                          11, -1, 11, -1, 11, -1, 11, -1, 15, -1, 15, -1, 15, -1, 15, -1);
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i s = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + i));
        const __m256i alphas = _mm256_and_si256(s, alpha);
        if (_mm256_movemask_epi8(_mm256_cmpeq_epi32(alphas, alpha)) == -1) {
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), s);
            continue;
        }
        if (_mm256_testz_si256(s, s)) continue;  // wholly transparent
        const __m256i d = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(dst + i));
        const __m256i rest = _mm256_xor_si256(s, _mm256_set1_epi32(-1));  // alpha byte: 255 - alpha
        __m256i lo = _mm256_mullo_epi16(_mm256_unpacklo_epi8(d, zero), _mm256_shuffle_epi8(rest, low));
        __m256i hi = _mm256_mullo_epi16(_mm256_unpackhi_epi8(d, zero), _mm256_shuffle_epi8(rest, high));
        lo = _mm256_add_epi16(lo, half);
        hi = _mm256_add_epi16(hi, half);
        lo = _mm256_srli_epi16(_mm256_add_epi16(lo, _mm256_srli_epi16(lo, 8)), 8);
        hi = _mm256_srli_epi16(_mm256_add_epi16(hi, _mm256_srli_epi16(hi, 8)), 8);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), _mm256_adds_epu8(_mm256_packus_epi16(lo, hi), s));
    }
    return i;
}

#endif

}  // namespace

std::uint32_t scaledBy(std::uint32_t pixel, std::uint32_t coverage) {
    std::uint32_t out = 0;
    for (int shift = 0; shift < 32; shift += 8) out |= mul255((pixel >> shift) & 0xff, coverage) << shift;
    return out;
}

std::uint32_t over(std::uint32_t s, std::uint32_t d) {
    const std::uint32_t rest = 255 - (s >> 24);
    std::uint32_t out = 0;
    for (int shift = 0; shift < 32; shift += 8)
        out |= std::min<std::uint32_t>(255, ((s >> shift) & 0xff) + mul255((d >> shift) & 0xff, rest)) << shift;
    return out;
}

void copyOpaque(const std::uint32_t* src, std::uint32_t* dst, int count) {
    int i = 0;
#ifdef ORVANE_PIXEL_BLEND_X86
    if (hasAvx2()) i = copyOpaqueAvx2(src, dst, count);
#endif
    for (; i < count; ++i) dst[i] = src[i] | 0xff000000u;
}

void sourceOver(const std::uint32_t* src, std::uint32_t* dst, int count) {
    int i = 0;
#ifdef ORVANE_PIXEL_BLEND_X86
    if (hasAvx2()) i = sourceOverAvx2(src, dst, count);
#endif
    for (; i < count; ++i) {
        const std::uint32_t s = src[i];
        if (s >= 0xff000000u)
            dst[i] = s;
        else if (s != 0)
            dst[i] = over(s, dst[i]);
    }
}

}  // namespace orvane::PixelBlend
