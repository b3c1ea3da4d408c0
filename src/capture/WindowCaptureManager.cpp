#include "capture/WindowCaptureManager.h"

#include <string>
#include <vector>

#include "capture/CaptureBackend.h"
#include "capture/ShareableWindow.h"
#include "capture/WindowListRules.h"
#include "document/Log.h"

namespace orvane {

WindowCaptureManager::WindowCaptureManager(CaptureBackend& backend, QObject* parent)
    : CaptureListManager(backend, QStringLiteral("Error loading windows: "), parent) {}

void WindowCaptureManager::fetchAvailableWindows() {
    fetch(&CaptureBackend::windows, [this](const std::vector<ShareableWindow>& windows) {
        availableWindows_ = WindowListRules::selectable(windows);
        logLine("🪟 Found " + std::to_string(availableWindows_.size()) + " windows");
        emit availableWindowsChanged();
    });
}

std::optional<QImage> WindowCaptureManager::getWindowThumbnail(std::uint32_t windowId) {
    return backend().windowThumbnail(windowId);
}

void WindowCaptureManager::bringWindowToFront(std::uint32_t windowId) {
    backend().bringWindowToFront(windowId);
}

}  // namespace orvane
