#pragma once

#include <string>

#include "document/Preset.h"

namespace orvane::testing {

// A fixed id for tests: "00000000-0000-4000-8000-" followed by n in 12 hex digits.
Uuid fixedId(unsigned n);

// A preset with every optional section present and fixed ids, so its
// encoding is stable enough for golden files: three scenes (camera, screen,
// window and slides sources), branding with a logo, a progress bar,
// a teleprompter, an active scene, a selected source, a "Diagonal ↘"
// gradient and a "Fade + Scale" transition.
Preset makeGoldenPreset();

std::string readWholeFile(const std::string& path);

}  // namespace orvane::testing
