#pragma once

#include "capture/PermissionStatus.h"

namespace orvane {

class CaptureBackend;

// Capture rights are never asked for: the probe simply lists the displays.
// On X11 that succeeds whenever a server is reachable.
class ScreenCapturePermissionProbe {
public:
    explicit ScreenCapturePermissionProbe(CaptureBackend& backend) : backend_(backend) {}
    PermissionStatus getScreenCapturePermissionStatus();

private:
    CaptureBackend& backend_;
};

}  // namespace orvane
