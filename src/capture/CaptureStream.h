#pragma once

#include "capture/CaptureResult.h"
#include "capture/GrabbedFrame.h"

namespace orvane {

// One open stream of pictures. Created, used and destroyed on one capture
// thread; only interrupt() may be called from elsewhere.
class CaptureStream {
public:
    virtual ~CaptureStream() = default;

    // Takes the next picture. A source that paces itself (a camera) blocks
    // until its device delivers; the others return at once.
    virtual CaptureResult<GrabbedFrame> grabFrame() = 0;
    virtual bool pacesItself() const { return false; }

    // Thread-safe: makes a blocked grabFrame() return soon, with an error.
    virtual void interrupt() {}
};

}  // namespace orvane
