#include "document/SourceFactory.h"

#include <algorithm>
#include <utility>

#include "document/SlidesResource.h"

namespace orvane::SourceFactory {

namespace {

Uuid appendAndSelect(StreamingScene& scene, Source source) {
    const Uuid id = source.id;
    scene.sources.push_back(std::move(source));
    scene.selectedSourceId = id;
    return id;
}

bool isCapture(const Source& source) {
    return source.type == SourceType::screen || source.type == SourceType::window;
}

bool isSlides(const Source& source) {
    return source.type == SourceType::content && source.configuration.contentType == ContentType::slides;
}

}  // namespace

Uuid addCameraSource(StreamingScene& scene, const CameraChoice& camera) {
    Source source;
    source.type = SourceType::camera;
    source.name = camera.name;
    source.configuration.cameraDeviceId = camera.deviceId;

    // Checked before appending; the camera itself is no capture source.
    if (scene.layout == SceneLayout::fullCamera && std::any_of(scene.sources.begin(), scene.sources.end(), isCapture))
        scene.layout = SceneLayout::pipBottomRight;
    return appendAndSelect(scene, std::move(source));
}

Uuid addScreenSource(StreamingScene& scene, const DisplayChoice& display) {
    Source source;
    source.type = SourceType::screen;
    source.name = display.name;
    source.configuration.screenId = display.id;
    return appendAndSelect(scene, std::move(source));
}

Uuid addWindowSource(StreamingScene& scene, const WindowChoice& window) {
    Source source;
    source.type = SourceType::window;
    source.name = window.title;
    source.configuration.windowId = window.id;
    source.configuration.windowTitle = window.title;
    source.configuration.windowOwner = window.owner;
    return appendAndSelect(scene, std::move(source));
}

Uuid addSlidesSource(StreamingScene& scene) {
    Source source;
    source.type = SourceType::content;
    source.name = nextSlidesSourceName(scene);
    source.configuration.contentType = ContentType::slides;
    source.configuration.slidesResource = SlidesResource::makeNew(source.name);
    return appendAndSelect(scene, std::move(source));
}

int countSlidesSources(const StreamingScene& scene) {
    return static_cast<int>(std::count_if(scene.sources.begin(), scene.sources.end(), isSlides));
}

std::string nextSlidesSourceName(const StreamingScene& scene) {
    return "Slides " + std::to_string(countSlidesSources(scene) + 1);
}

}  // namespace orvane::SourceFactory
