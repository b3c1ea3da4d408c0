#include "capture/CaptureError.h"

namespace orvane {

QString errorDescription(CaptureError error) {
    switch (error) {
    case CaptureError::noDisplayFound: return QStringLiteral("No display found");
    case CaptureError::noWindowIdProvided: return QStringLiteral("No window ID provided");
    case CaptureError::windowNotFound: return QStringLiteral("Window not found");
    case CaptureError::unsupportedSourceType: return QStringLiteral("Unsupported source type");
    }
    return QStringLiteral("Unknown capture error");
}

QString permissionRequiredMessage() {
    return QStringLiteral("Screen recording permission is required. Please grant permission and restart the app.");
}

}  // namespace orvane
