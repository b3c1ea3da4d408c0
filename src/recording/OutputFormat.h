#pragma once

#include <array>
#include <string_view>

#include "document/EnumStrings.h"

namespace orvane {

// The container; the text is the file extension and what the picker shows.
enum class OutputFormat { mp4 = 1, mov, m4v };

template <>
struct EnumStrings<OutputFormat> {
    static constexpr std::array<std::pair<OutputFormat, std::string_view>, 3> table{{
        {OutputFormat::mp4, "mp4"},
        {OutputFormat::mov, "mov"},
        {OutputFormat::m4v, "m4v"},
    }};
};

// The libavformat muxer that writes each container.
constexpr const char* muxerName(OutputFormat format) {
    switch (format) {
    case OutputFormat::mp4: return "mp4";
    case OutputFormat::mov: return "mov";
    case OutputFormat::m4v: return "ipod";
    }
    return "mov";
}

}  // namespace orvane
