#pragma once

#include <cstddef>

#include "document/Preset.h"

namespace orvane::test {

// A preset with every optional section present: branding with a logo path,
// a progress bar with steps, a teleprompter, activeSceneId, and per scene a
// camera, a window and a slides source with a few slides, selectedSourceId
// set. `scriptBytes` pads the teleprompter script to make a large file.
Preset makeFullPreset(int sceneCount = 10, std::size_t scriptBytes = 0);

}  // namespace orvane::test
