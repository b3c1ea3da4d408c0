#pragma once

#include <functional>

#include "document/Preset.h"

namespace orvane {

class StreamManager;

// Preset-level settings are written by copying the current preset,
// changing the copy, making it current and saving it. Without a current
// preset nothing is written.
void editCurrentPreset(StreamManager& streamManager, const std::function<void(Preset&)>& edit);

}  // namespace orvane
