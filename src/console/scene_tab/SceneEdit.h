#pragma once

#include <functional>

#include "document/StreamingScene.h"

namespace orvane {

// One change to the selected scene. A panel hands its change to the scene
// tab, which applies it to a copy of the scene and writes the copy back.
using SceneEdit = std::function<void(StreamingScene&)>;
using SceneEditor = std::function<void(const SceneEdit&)>;

}  // namespace orvane
