#pragma once

#include <string>

#include "document/StreamingScene.h"

namespace orvane {

// The identity under which a stage holds its composition. A change of key
// rebuilds the composition (the zoom restarts, decks go back to their stored
// page); on the program stage a changed scene id also plays the transition.
class CompositionIdentity {
public:
    static std::string key(const StreamingScene& scene, double sceneUpdateTimestamp);
};

}  // namespace orvane
