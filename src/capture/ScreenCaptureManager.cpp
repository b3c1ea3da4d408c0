#include "capture/ScreenCaptureManager.h"

#include <string>
#include <vector>

#include "capture/CaptureBackend.h"
#include "document/Log.h"

namespace orvane {

ScreenCaptureManager::ScreenCaptureManager(CaptureBackend& backend, QObject* parent)
    : CaptureListManager(backend, QStringLiteral("Error loading displays: "), parent) {}

void ScreenCaptureManager::fetchAvailableDisplays() {
    fetch(&CaptureBackend::displays, [this](const std::vector<CaptureDisplay>& displays) {
        availableDisplays_ = QList<CaptureDisplay>(displays.begin(), displays.end());
        logLine("🖥️ Found " + std::to_string(availableDisplays_.size()) + " displays");
        emit availableDisplaysChanged();
    });
}

std::optional<QImage> ScreenCaptureManager::getDisplayThumbnail(std::uint32_t displayId) {
    return backend().displayThumbnail(displayId);
}

}  // namespace orvane
