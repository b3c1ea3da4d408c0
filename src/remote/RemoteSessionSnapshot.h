#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane {

// One scene as the remote interface sees it.
struct RemoteSceneEntry {
    std::string id;  // the scene's id as text; only compared, never parsed
    std::string name;
};

// The active or program scene, with the two flags the overlay toggles read.
struct RemoteSceneState {
    std::string id;
    std::string name;
    bool progressBarEnabled = true;
    bool brandingEnabled = true;
};

// What the request handlers may read of the session. Built on the main
// thread on every relevant change and never modified once published, so
// the server thread reads it without a lock. A missing snapshot stands for
// a session that is gone.
struct RemoteSessionSnapshot {
    bool hasPreset = false;
    std::vector<RemoteSceneEntry> scenes;  // the preset's scenes, document order
    std::optional<RemoteSceneState> activeScene;
    std::optional<RemoteSceneState> programScene;
    bool isRecording = false;
    bool isStreaming = false;
    bool isDrawingModeEnabled = false;
    bool isBlurModeActive = false;
};

}  // namespace orvane
