#include "capture/ScreenCapturePermissionProbe.h"

#include "capture/CaptureBackend.h"
#include "document/Log.h"

namespace orvane {

PermissionStatus ScreenCapturePermissionProbe::getScreenCapturePermissionStatus() {
    auto listed = backend_.displays();
    if (listed) {
        if (lastFailure_) logLine("✅ Screen capture is available again");
        lastFailure_.reset();
        return PermissionStatus::granted;
    }
    if (lastFailure_ != listed.error())
        logLine("⚠️ Screen capture is not available: " + listed.error().toStdString());
    lastFailure_ = listed.error();
    return PermissionStatus::denied;
}

}  // namespace orvane
