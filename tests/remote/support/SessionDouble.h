#pragma once

#include <QObject>
#include <optional>
#include <string>
#include <vector>

#include "remote/RecordingControl.h"
#include "remote/RemoteActions.h"
#include "remote/RemoteSessionSnapshot.h"

namespace orvane {
class WebServerManager;
}

namespace orvane::test {

// A small but real session: scenes with ids, an active scene, a program
// scene that gets a fresh id on each go-live, the overlay and mode flags,
// and a recorder. Applies the remote's actions and republishes its snapshot
// after every change, as the console's session does.
class SessionDouble : public QObject, public RemoteActions, public RecordingControl {
    Q_OBJECT
public:
    struct Scene {
        std::string id;
        std::string name;
        bool progressBarEnabled = true;
        bool brandingEnabled = true;
    };

    explicit SessionDouble(WebServerManager* server, QObject* parent = nullptr);

    // Replaces the preset; the first scene becomes active unless told otherwise.
    void loadPreset(const std::vector<std::string>& names, std::optional<int> activeIndex = 0);
    void unloadPreset();
    void setActiveIndex(std::optional<int> index);
    void setStreaming(bool streaming);
    // Stops publishing, as a session that is gone.
    void detach();

    const std::vector<Scene>& scenes() const { return scenes_; }
    std::optional<int> activeIndex() const;
    const std::optional<Scene>& programScene() const { return program_; }
    bool isDrawingModeEnabled() const { return drawing_; }
    bool isBlurModeActive() const { return blur_; }
    int liveUpdates() const { return liveUpdates_; }
    int actionsApplied() const { return actionsApplied_; }

    // RemoteActions
    void switchToScene(int index, const std::string& sceneId) override;
    void updateLive() override;
    void setDrawingModeEnabled(bool enabled) override;
    void setSceneProgressBarEnabled(const std::string& sceneId, bool enabled) override;
    void setSceneBrandingEnabled(const std::string& sceneId, bool enabled) override;
    void toggleBlurMode() override;

    // RecordingControl
    bool isRecording() const override { return recording_; }
    void startRecording() override;
    void stopRecording() override;

signals:
    void changed();

private:
    void publish();
    Scene* sceneById(const std::string& id);

    WebServerManager* server_;
    bool hasPreset_ = false;
    std::vector<Scene> scenes_;
    std::optional<std::string> activeId_;
    std::optional<Scene> program_;
    bool drawing_ = false;
    bool blur_ = false;
    bool recording_ = false;
    bool streaming_ = false;
    bool attached_ = true;
    int liveUpdates_ = 0;
    int actionsApplied_ = 0;
    int nextId_ = 1;
};

}  // namespace orvane::test
