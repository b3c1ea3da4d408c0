#pragma once

#include "capture/CaptureQuality.h"
#include "engine/StreamQuality.h"

namespace orvane {

// The engine's session-wide quality as the size and rate of a live capture.
CaptureQuality captureQualityFor(StreamQuality quality);

}  // namespace orvane
