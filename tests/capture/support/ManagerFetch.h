#pragma once

#include "capture/ScreenCaptureManager.h"
#include "capture/WindowCaptureManager.h"
#include "support/QtTestEnvironment.h"

namespace orvane::test {

// Starts a fetch and runs the event loop until its result is published.
inline bool fetchAndWait(WindowCaptureManager& manager) {
    manager.fetchAvailableWindows();
    return waitUntil([&] { return !manager.isLoading(); });
}

inline bool fetchAndWait(ScreenCaptureManager& manager) {
    manager.fetchAvailableDisplays();
    return waitUntil([&] { return !manager.isLoading(); });
}

}  // namespace orvane::test
