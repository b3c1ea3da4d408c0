#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "document/EnumStrings.h"

namespace orvane {

// The size a recording is composed at, and the floor of its bit rate.
enum class VideoQuality { low = 1, medium, high, ultra };

template <>
struct EnumStrings<VideoQuality> {
    static constexpr std::array<std::pair<VideoQuality, std::string_view>, 4> table{{
        {VideoQuality::low, "Low (720p)"},
        {VideoQuality::medium, "Medium (1080p)"},
        {VideoQuality::high, "High (1440p)"},
        {VideoQuality::ultra, "Ultra (4K)"},
    }};
};

struct VideoQualityRow {
    int width = 0;
    int height = 0;
    std::int64_t minimumBitRate_bps = 0;
};

constexpr VideoQualityRow videoQualityRow(VideoQuality quality) {
    switch (quality) {
    case VideoQuality::low: return {1280, 720, 2'500'000};
    case VideoQuality::medium: return {1920, 1080, 5'000'000};
    case VideoQuality::high: return {2560, 1440, 10'000'000};
    case VideoQuality::ultra: return {3840, 2160, 20'000'000};
    }
    return {2560, 1440, 10'000'000};
}

// Eight bits for every pixel of one frame, whatever the frame rate, but never
// below the quality's floor.
constexpr std::int64_t videoBitRate_bps(int width, int height, VideoQuality quality) {
    const std::int64_t perPixel = static_cast<std::int64_t>(width) * height * 8;
    const std::int64_t floor = videoQualityRow(quality).minimumBitRate_bps;
    return perPixel > floor ? perPixel : floor;
}

}  // namespace orvane
