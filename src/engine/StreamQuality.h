#pragma once

#include <string_view>

#include "document/EnumStrings.h"

namespace orvane {

// How heavy the live captures are, session-wide and never stored. The
// capture layer turns it into stream sizes and rates; the label is also the
// menu title, the subtitle what the menu shows under it.
enum class StreamQuality { performance = 1, balanced, quality, maximum };

template <>
struct EnumStrings<StreamQuality> {
    static constexpr std::array<std::pair<StreamQuality, std::string_view>, 4> table{{
        {StreamQuality::performance, "Performance"},
        {StreamQuality::balanced, "Balanced"},
        {StreamQuality::quality, "Quality"},
        {StreamQuality::maximum, "Maximum"},
    }};
};

// The menu subtitle. "2160p" for maximum is the label users know, although
// the stream itself uses 1440 lines.
constexpr std::string_view subtitle(StreamQuality quality) {
    switch (quality) {
    case StreamQuality::performance: return "540p \u2022 10fps \u2022 Low CPU";
    case StreamQuality::balanced: return "720p \u2022 15fps \u2022 Medium CPU";
    case StreamQuality::quality: return "1080p \u2022 30fps \u2022 High CPU";
    case StreamQuality::maximum: return "2160p \u2022 60fps \u2022 Maximum CPU";
    }
    return {};
}

}  // namespace orvane
