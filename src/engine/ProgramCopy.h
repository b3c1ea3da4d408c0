#pragma once

#include "document/StreamingScene.h"

namespace orvane {

// The scene put on air by a go-live: a fresh id, so that the program stage
// sees a new identity even for the same scene and later edits of the scene
// no longer reach it; the same source ids; no selection.
StreamingScene makeProgramCopy(const StreamingScene& scene);

}  // namespace orvane
