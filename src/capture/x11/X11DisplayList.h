#pragma once

#include <vector>

#include "capture/CaptureDisplay.h"
#include "capture/CaptureResult.h"

namespace orvane {

class XcbConnection;

// The displays of an X screen from RandR monitors. A monitor alone on its
// first output has that output's id; one that shares its output or has none
// has an id made from its name (X11MonitorIds), so each display keeps an id
// of its own across restarts. The primary monitor, else the one showing the
// primary output, else the first, is "Main Display"; the others are
// "Display <id>".
class X11DisplayList {
public:
    static CaptureResult<std::vector<CaptureDisplay>> list(const XcbConnection& connection);
};

}  // namespace orvane
