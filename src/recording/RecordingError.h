#pragma once

#include <array>
#include <string_view>

#include "document/EnumStrings.h"

namespace orvane {

// The recorder's own failures; the text is the error's description. The
// first two belonged to a window search this recorder does not make and are
// kept for the texts only.
enum class RecordingError { noDisplayFound = 1, windowNotFound, setupFailed, writingFailed };

template <>
struct EnumStrings<RecordingError> {
    static constexpr std::array<std::pair<RecordingError, std::string_view>, 4> table{{
        {RecordingError::noDisplayFound, "No display found for recording"},
        {RecordingError::windowNotFound, "Selected window not found"},
        {RecordingError::setupFailed, "Failed to setup recording"},
        {RecordingError::writingFailed, "Failed to write recording file"},
    }};
};

}  // namespace orvane
