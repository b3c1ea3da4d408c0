#include "capture/CaptureHub.h"

#include "document/Log.h"

namespace orvane {

std::shared_ptr<SharedCapture> CaptureHub::acquire(const QString& key, int framesPerSecond,
                                                   SharedCapture::Opener opener, bool announce) {
    if (auto running = find(key); running && running->errorMessage().isEmpty()) return running;
    // Expired entries are swept here so the map does not grow without bound.
    std::erase_if(captures_, [](const auto& entry) { return entry.second.expired(); });
    auto capture = std::make_shared<SharedCapture>(key, framesPerSecond, std::move(opener));
    captures_[key] = capture;
    if (announce) logLine("🎬 Capture started: " + key.toStdString());
    return capture;
}

CapturedFrame CaptureHub::latestFrame(const QString& key) const {
    if (auto capture = find(key)) return capture->latestFrame();
    return {};
}

std::shared_ptr<SharedCapture> CaptureHub::find(const QString& key) const {
    auto it = captures_.find(key);
    return it == captures_.end() ? nullptr : it->second.lock();
}

int CaptureHub::runningCount() const {
    int count = 0;
    for (const auto& entry : captures_)
        if (!entry.second.expired()) ++count;
    return count;
}

}  // namespace orvane
