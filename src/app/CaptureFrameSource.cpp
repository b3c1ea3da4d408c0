#include "CaptureFrameSource.h"

#include "capture/SourceCaptures.h"

namespace orvane {

SourceFrame CaptureFrameSource::latestFrame(const Source& source) const { return captures_.latestFrame(source); }

}  // namespace orvane
