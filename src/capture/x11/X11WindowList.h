#pragma once

#include <vector>

#include "capture/CaptureResult.h"
#include "capture/ShareableWindow.h"

namespace orvane {

class X11Ewmh;
class XcbConnection;

// The managed windows from _NET_CLIENT_LIST that are on screen: title from
// _NET_WM_NAME, else WM_NAME; owner from WM_CLASS, else the process name of
// _NET_WM_PID; bounds on the screen. Normal windows are layer 0.
class X11WindowList {
public:
    static CaptureResult<std::vector<ShareableWindow>> list(const XcbConnection& connection, X11Ewmh& ewmh);
};

}  // namespace orvane
