#pragma once

#include <cstdint>
#include <string>

#include "document/StreamingScene.h"
#include "document/Uuid.h"

namespace orvane {

// The four ways a source comes into a scene. Each starts from a fresh id and
// the default configuration, sets only the fields of its kind, appends the
// source to the scene and selects it. They work on the caller's copy of the
// scene; handing it to the session is the caller's next step.
//
// The document does not know the capture layer's records, so the choices
// come in as the ids and names a source keeps of them.

struct CameraChoice {
    std::string deviceId;
    std::string name;
};

struct DisplayChoice {
    std::uint32_t id = 0;
    std::string name;  // the display's shown name ("Main Display", "Display 2", ...)
};

struct WindowChoice {
    std::uint32_t id = 0;
    std::string title;
    std::string owner;
};

namespace SourceFactory {

// A camera that joins a scene already showing a screen or window turns a
// full-camera layout into a corner overlay (PIP bottom right).
Uuid addCameraSource(StreamingScene& scene, const CameraChoice& camera);
Uuid addScreenSource(StreamingScene& scene, const DisplayChoice& display);
Uuid addWindowSource(StreamingScene& scene, const WindowChoice& window);
// Named "Slides N", N being one more than the slides sources the scene
// holds now; the new deck carries the same title.
Uuid addSlidesSource(StreamingScene& scene);

int countSlidesSources(const StreamingScene& scene);
std::string nextSlidesSourceName(const StreamingScene& scene);

}  // namespace SourceFactory

}  // namespace orvane
