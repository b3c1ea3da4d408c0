#pragma once

#include <QString>

namespace orvane {

// Why a screen or window capture could not start.
enum class CaptureError { noDisplayFound = 0, noWindowIdProvided, windowNotFound, unsupportedSourceType };

// The user-visible description, shown after "Capture error: ".
QString errorDescription(CaptureError error);

}  // namespace orvane
