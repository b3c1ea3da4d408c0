#pragma once

#include <QString>

namespace orvane {

// Why a screen or window capture could not start.
enum class CaptureError { noDisplayFound = 0, noWindowIdProvided, windowNotFound, unsupportedSourceType };

// The user-visible description, shown after "Capture error: ".
QString errorDescription(CaptureError error);

// What the display and window lists say when the desktop declined to list.
QString permissionRequiredMessage();

}  // namespace orvane
