#pragma once

#include <cstdint>

namespace orvane {

// Row kernels for 32-bit pixels (premultiplied ARGB, or RGB32 whose alpha
// byte is to be taken as opaque), vectorised where the processor has AVX2.
namespace PixelBlend {

// c * a / 255, rounded, for bytes.
inline std::uint32_t mul255(std::uint32_t c, std::uint32_t a) {
    const std::uint32_t x = c * a + 128;
    return (x + (x >> 8)) >> 8;
}

// A premultiplied pixel scaled by a coverage of 0 to 255.
std::uint32_t scaledBy(std::uint32_t pixel, std::uint32_t coverage);

// s over d, both premultiplied.
std::uint32_t over(std::uint32_t s, std::uint32_t d);

// dst = src with alpha made opaque (the pixels of an RGB32 image).
void copyOpaque(const std::uint32_t* src, std::uint32_t* dst, int count);

// dst = src over dst, premultiplied; opaque runs are copied.
void sourceOver(const std::uint32_t* src, std::uint32_t* dst, int count);

}  // namespace PixelBlend

}  // namespace orvane
