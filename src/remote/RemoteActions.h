#pragma once

#include <string>

namespace orvane {

// What the remote may ask of the session. Every call arrives on the main
// thread, one event-loop turn or more after the reply has left.
class RemoteActions {
public:
    virtual ~RemoteActions() = default;

    // The scene the request saw at `index`; `sceneId` lets the session notice
    // that the preset changed in between.
    virtual void switchToScene(int index, const std::string& sceneId) = 0;
    virtual void updateLive() = 0;
    virtual void setDrawingModeEnabled(bool enabled) = 0;
    virtual void setSceneProgressBarEnabled(const std::string& sceneId, bool enabled) = 0;
    virtual void setSceneBrandingEnabled(const std::string& sceneId, bool enabled) = 0;
    virtual void toggleBlurMode() = 0;
};

}  // namespace orvane
