#include "capture/ScreenCapturePermissionProbe.h"

#include "capture/CaptureBackend.h"
#include "document/Log.h"

namespace orvane {

PermissionStatus ScreenCapturePermissionProbe::getScreenCapturePermissionStatus() {
    auto listed = backend_.displays();
    if (listed) return PermissionStatus::granted;
    logLine("⚠️ Screen capture is not available: " + listed.error().toStdString());
    return PermissionStatus::denied;
}

}  // namespace orvane
