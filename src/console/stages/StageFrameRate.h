#pragma once

#include "engine/StreamQuality.h"

namespace orvane {

// How often a surface with live sources draws: the capture rate of the
// session's stream quality.
class StageFrameRate {
public:
    static int forQuality(StreamQuality quality);
};

}  // namespace orvane
