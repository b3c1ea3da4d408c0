#pragma once

#include <array>
#include <string_view>

#include "document/EnumStrings.h"

namespace orvane {

// Where the recorder stands. The ordinals are the ones the panel and the
// remote know; `paused` has its text but nothing enters it.
enum class RecordingStatus { idle = 0, preparing, recording, paused, stopping, completed, error };

template <>
struct EnumStrings<RecordingStatus> {
    static constexpr std::array<std::pair<RecordingStatus, std::string_view>, 7> table{{
        {RecordingStatus::idle, "Ready"},
        {RecordingStatus::preparing, "Preparing..."},
        {RecordingStatus::recording, "Recording..."},
        {RecordingStatus::paused, "Paused"},
        {RecordingStatus::stopping, "Stopping..."},
        {RecordingStatus::completed, "Completed"},
        {RecordingStatus::error, "Error"},
    }};
};

}  // namespace orvane
