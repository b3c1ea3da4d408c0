#pragma once

#include "document/Source.h"
#include "paint/SourceFrame.h"

namespace orvane {

// Hands the compositor the latest frame of each source: one capture per
// target, shared by every place that draws it. Called on the main thread
// during painting, so it must return at once; whoever implements it hands
// frames over from the capture threads itself. QImage shares its pixels, so
// returning the latest frame by value copies nothing.
class FrameSource {
public:
    virtual ~FrameSource() = default;

    // Keyed by the source record: its id names the capture, its type and
    // configuration say what the capture is of.
    virtual SourceFrame latestFrame(const Source& source) const = 0;
};

}  // namespace orvane
