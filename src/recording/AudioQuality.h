#pragma once

#include <array>
#include <string_view>

#include "document/EnumStrings.h"

namespace orvane {

// The audio quality picker. Only the capture rate follows it; the file's own
// AAC settings are fixed, so the labels promise more than the numbers give.
enum class AudioQuality { low = 1, medium, high, lossless };

template <>
struct EnumStrings<AudioQuality> {
    static constexpr std::array<std::pair<AudioQuality, std::string_view>, 4> table{{
        {AudioQuality::low, "Low (64 kbps)"},
        {AudioQuality::medium, "Medium (128 kbps)"},
        {AudioQuality::high, "High (256 kbps)"},
        {AudioQuality::lossless, "Lossless (PCM)"},
    }};
};

constexpr int captureSampleRate_hz(AudioQuality quality) {
    switch (quality) {
    case AudioQuality::low: return 22050;
    case AudioQuality::medium: return 44100;
    case AudioQuality::high: return 48000;
    case AudioQuality::lossless: return 48000;
    }
    return 48000;
}

}  // namespace orvane
