#pragma once

#include <QString>

#include <optional>

#include "capture/PermissionStatus.h"

namespace orvane {

class CaptureBackend;

// Capture rights are never asked for: the probe simply lists the displays.
// On X11 that succeeds whenever a server is reachable. A probe asked again
// and again says why capture is unavailable only when the reason changes,
// and once when it is available again.
class ScreenCapturePermissionProbe {
public:
    explicit ScreenCapturePermissionProbe(CaptureBackend& backend) : backend_(backend) {}
    PermissionStatus getScreenCapturePermissionStatus();

private:
    CaptureBackend& backend_;
    std::optional<QString> lastFailure_;  // the reason last said
};

}  // namespace orvane
