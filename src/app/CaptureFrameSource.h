#pragma once

#include "composition/FrameSource.h"

namespace orvane {

class SourceCaptures;

// The compositor's frame source over the capture layer: each source's latest
// picture, its capture started on first ask and shared through the hub.
class CaptureFrameSource : public FrameSource {
public:
    explicit CaptureFrameSource(SourceCaptures& captures) : captures_(captures) {}

    SourceFrame latestFrame(const Source& source) const override;

private:
    SourceCaptures& captures_;
};

}  // namespace orvane
