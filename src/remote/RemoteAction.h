#pragma once

#include <string>

namespace orvane {

// A change that a request asks of the session. The server thread decides it
// from a snapshot; the main thread carries it out later.
struct RemoteAction {
    enum class Kind {
        switchToScene,       // sceneIndex, sceneId, sceneName
        updateLive,
        toggleRecording,     // flips whatever the recorder does at run time
        setDrawingMode,      // value, computed from the snapshot
        setSceneProgressBar, // sceneId, value
        setSceneBranding,    // sceneId, value
        toggleBlurMode,
    };

    Kind kind = Kind::updateLive;
    int sceneIndex = -1;
    std::string sceneId;
    std::string sceneName;
    bool value = false;

    friend bool operator==(const RemoteAction&, const RemoteAction&) = default;
};

}  // namespace orvane
