#include "support/DeepEqual.h"

namespace orvane::testing {

namespace {

template <typename T>
bool allDeepEqual(const std::vector<T>& a, const std::vector<T>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!deepEqual(a[i], b[i])) return false;
    return true;
}

template <typename T>
bool optionalDeepEqual(const std::optional<T>& a, const std::optional<T>& b) {
    if (a.has_value() != b.has_value()) return false;
    return !a || deepEqual(*a, *b);
}

}  // namespace

bool deepEqual(const SlidesResource& a, const SlidesResource& b) {
    return a.id == b.id && a.title == b.title && a.slides == b.slides &&
           a.currentSlideIndex == b.currentSlideIndex && a.backgroundColor == b.backgroundColor &&
           a.textColor == b.textColor && a.accentColor == b.accentColor && a.textScale == b.textScale &&
           a.textAlignment == b.textAlignment;
}

bool deepEqual(const SourceConfiguration& a, const SourceConfiguration& b) {
    return a.position == b.position && a.size == b.size && a.cameraDeviceId == b.cameraDeviceId &&
           a.screenId == b.screenId && a.windowId == b.windowId && a.windowTitle == b.windowTitle &&
           a.windowOwner == b.windowOwner && a.contentType == b.contentType &&
           optionalDeepEqual(a.slidesResource, b.slidesResource) && a.isBlurred == b.isBlurred &&
           a.brightness == b.brightness && a.scale == b.scale && a.horizontalOffset == b.horizontalOffset &&
           a.verticalOffset == b.verticalOffset && a.backgroundColor == b.backgroundColor &&
           a.borderEnabled == b.borderEnabled && a.borderColor == b.borderColor && a.borderWidth == b.borderWidth &&
           a.borderGlow == b.borderGlow && a.borderRadius == b.borderRadius && a.shadowEnabled == b.shadowEnabled &&
           a.shadowColor == b.shadowColor && a.shadowRadius == b.shadowRadius && a.shadowX == b.shadowX &&
           a.shadowY == b.shadowY && a.cameraShape == b.cameraShape && a.cameraPosition == b.cameraPosition &&
           a.cameraSize == b.cameraSize && a.isOverlay == b.isOverlay &&
           a.cameraBorderEnabled == b.cameraBorderEnabled && a.cameraBorderColor == b.cameraBorderColor &&
           a.cameraBorderWidth == b.cameraBorderWidth && a.cameraBorderGlow == b.cameraBorderGlow &&
           a.cameraBorderRadius == b.cameraBorderRadius && a.cameraZoom == b.cameraZoom &&
           a.cameraWidth == b.cameraWidth && a.cameraHeight == b.cameraHeight &&
           a.cameraHorizontalPosition == b.cameraHorizontalPosition &&
           a.cameraVerticalPosition == b.cameraVerticalPosition && a.cameraBrightness == b.cameraBrightness &&
           a.cameraContrast == b.cameraContrast;
}

bool deepEqual(const Source& a, const Source& b) {
    return a.id == b.id && a.type == b.type && a.name == b.name && deepEqual(a.configuration, b.configuration);
}

bool deepEqual(const StreamingScene& a, const StreamingScene& b) {
    return a.id == b.id && a.name == b.name && a.icon == b.icon && allDeepEqual(a.sources, b.sources) &&
           a.selectedSourceId == b.selectedSourceId && a.brandingEnabled == b.brandingEnabled &&
           a.progressBarEnabled == b.progressBarEnabled && a.backgroundColor == b.backgroundColor &&
           a.backgroundType == b.backgroundType && a.gradientColors == b.gradientColors &&
           a.gradientDirection == b.gradientDirection && a.layout == b.layout &&
           a.cinematicZoomEnabled == b.cinematicZoomEnabled;
}

bool deepEqual(const Preset& a, const Preset& b) {
    return a.id == b.id && a.name == b.name && allDeepEqual(a.scenes, b.scenes) &&
           a.activeSceneId == b.activeSceneId && a.branding == b.branding && a.progressBar == b.progressBar &&
           a.hideProgramWhenPopout == b.hideProgramWhenPopout && a.teleprompter == b.teleprompter &&
           a.sceneTransition == b.sceneTransition;
}

}  // namespace orvane::testing
