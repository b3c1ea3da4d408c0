#pragma once

#include <vector>

#include "capture/CaptureDisplay.h"
#include "capture/CaptureQuality.h"
#include "capture/CaptureResult.h"
#include "capture/CaptureTarget.h"
#include "capture/ShareableWindow.h"
#include "document/Source.h"

namespace orvane {

// Chooses what a screen or window source captures, at which size, and
// where the cursor may be drawn. Failures carry a CaptureError description.
class CaptureTargetResolver {
public:
    static CaptureResult<CaptureTarget> resolve(const Source& source, const CaptureQuality& quality,
                                                const std::vector<CaptureDisplay>& displays,
                                                const std::vector<ShareableWindow>& windows);
};

}  // namespace orvane
