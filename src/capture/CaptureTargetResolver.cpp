#include "capture/CaptureTargetResolver.h"

#include "capture/CaptureError.h"

namespace orvane {

namespace {

CaptureResult<CaptureTarget> fail(CaptureError error) {
    return CaptureResult<CaptureTarget>::failure(errorDescription(error));
}

CaptureResult<CaptureTarget> resolveDisplay(const SourceConfiguration& config, const CaptureQuality& quality,
                                            const std::vector<CaptureDisplay>& displays) {
    const CaptureDisplay* chosen = nullptr;
    if (config.screenId) {
        // A stale id fails; it does not fall back to another display.
        for (const CaptureDisplay& display : displays)
            if (display.id == *config.screenId) chosen = &display;
    } else if (!displays.empty()) {
        chosen = &displays.front();
    }
    if (!chosen) return fail(CaptureError::noDisplayFound);

    CaptureTarget target;
    target.kind = CaptureTarget::Kind::display;
    target.id = chosen->id;
    target.outputSize = quality.size();
    target.framesPerSecond = quality.framesPerSecond;
    // Without a stored id the cursor region stays empty: the pointer is
    // never inside it, so such a capture never shows the cursor.
    if (config.screenId) target.cursorRegion = chosen->frame;
    return target;
}

CaptureResult<CaptureTarget> resolveWindow(const SourceConfiguration& config, const CaptureQuality& quality,
                                           const std::vector<ShareableWindow>& windows) {
    if (!config.windowId) return fail(CaptureError::noWindowIdProvided);

    CaptureTarget target;
    target.kind = CaptureTarget::Kind::window;
    target.framesPerSecond = quality.framesPerSecond;

    for (const ShareableWindow& window : windows) {
        if (window.id != *config.windowId) continue;
        // Found by id: the window's own size at start, whatever the quality.
        target.id = window.id;
        target.outputSize = window.frame.size();
        target.cursorRegion = window.frame;
        return target;
    }

    // Fallback by name: quality size, and no cursor region.
    if (!config.windowOwner) return fail(CaptureError::windowNotFound);
    const QString owner = QString::fromStdString(*config.windowOwner);
    auto ownedBy = [&](const ShareableWindow& window) {
        return window.applicationName && *window.applicationName == owner;
    };
    const ShareableWindow* chosen = nullptr;
    if (config.windowTitle && !config.windowTitle->empty()) {
        const QString title = QString::fromStdString(*config.windowTitle);
        for (const ShareableWindow& window : windows) {
            if (ownedBy(window) && window.title == title) {
                chosen = &window;
                break;
            }
        }
    }
    if (!chosen) {
        for (const ShareableWindow& window : windows) {
            if (ownedBy(window)) {
                chosen = &window;
                break;
            }
        }
    }
    if (!chosen) return fail(CaptureError::windowNotFound);
    target.id = chosen->id;
    target.outputSize = quality.size();
    return target;
}

}  // namespace

CaptureResult<CaptureTarget> CaptureTargetResolver::resolve(const Source& source, const CaptureQuality& quality,
                                                            const std::vector<CaptureDisplay>& displays,
                                                            const std::vector<ShareableWindow>& windows) {
    switch (source.type) {
    case SourceType::screen: return resolveDisplay(source.configuration, quality, displays);
    case SourceType::window: return resolveWindow(source.configuration, quality, windows);
    case SourceType::camera:
    case SourceType::content: break;
    }
    return fail(CaptureError::unsupportedSourceType);
}

}  // namespace orvane
