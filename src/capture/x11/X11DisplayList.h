#pragma once

#include <vector>

#include "capture/CaptureDisplay.h"
#include "capture/CaptureResult.h"

namespace orvane {

class XcbConnection;

// The displays of an X screen from RandR monitors. A monitor's id is its
// first RandR output's id; a monitor without an output of its own (one
// made by splitting a screen) gets its name atom with the top bit set, which
// no XID carries. The primary monitor, else the one showing the primary
// output, else the first, is "Main Display".
class X11DisplayList {
public:
    static CaptureResult<std::vector<CaptureDisplay>> list(const XcbConnection& connection);
};

}  // namespace orvane
