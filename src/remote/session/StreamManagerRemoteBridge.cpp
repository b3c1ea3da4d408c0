#include "remote/session/StreamManagerRemoteBridge.h"

#include <algorithm>

#include "engine/StreamManager.h"
#include "remote/WebServerManager.h"

namespace orvane {

namespace {

RemoteSceneState stateOf(const StreamingScene& scene) {
    return {scene.id.toString(), scene.name, scene.progressBarEnabled, scene.brandingEnabled};
}

}  // namespace

StreamManagerRemoteBridge::StreamManagerRemoteBridge(StreamManager* session, WebServerManager* server,
                                                     QObject* parent)
    : QObject(parent), session_(session), server_(server) {
    server->setActions(this);
    server->setRecordingControl(this);

    const auto republish = [this] { publish(); };
    connect(session, &StreamManager::currentPresetChanged, this, republish);
    connect(session, &StreamManager::activeSceneChanged, this, republish);
    connect(session, &StreamManager::programSceneChanged, this, republish);
    connect(session, &StreamManager::isRecordingChanged, this, republish);
    connect(session, &StreamManager::isStreamingChanged, this, republish);
    connect(&session->drawing(), &DrawingState::isDrawingModeEnabledChanged, this, republish);
    connect(session, &StreamManager::isBlurModeActiveChanged, this, republish);
    connect(session, &QObject::destroyed, this, [this] {
        if (server_) {
            server_->setActions(nullptr);
            server_->setRecordingControl(nullptr);
            server_->publishSession(nullptr);  // "StreamManager not available" from now on
        }
    });
    publish();
}

StreamManagerRemoteBridge::~StreamManagerRemoteBridge() {
    if (server_) {
        server_->setActions(nullptr);
        server_->setRecordingControl(nullptr);
    }
}

void StreamManagerRemoteBridge::setRecordingControl(RecordingControl* recorder) {
    if (server_) server_->setRecordingControl(recorder ? recorder : this);
}

std::shared_ptr<const RemoteSessionSnapshot> StreamManagerRemoteBridge::snapshotOf(const StreamManager& session) {
    auto snapshot = std::make_shared<RemoteSessionSnapshot>();
    if (const auto& preset = session.currentPreset()) {
        snapshot->hasPreset = true;
        snapshot->scenes.reserve(preset->scenes.size());
        for (const auto& scene : preset->scenes) snapshot->scenes.push_back({scene.id.toString(), scene.name});
    }
    if (const auto& active = session.activeScene()) snapshot->activeScene = stateOf(*active);
    if (const auto& program = session.programScene()) snapshot->programScene = stateOf(*program);
    snapshot->isRecording = session.isRecording();
    snapshot->isStreaming = session.isStreaming();
    snapshot->isDrawingModeEnabled = session.drawing().isDrawingModeEnabled();
    snapshot->isBlurModeActive = session.isBlurModeActive();
    return snapshot;
}

void StreamManagerRemoteBridge::publish() {
    if (session_ && server_) server_->publishSession(snapshotOf(*session_));
}

void StreamManagerRemoteBridge::switchToScene(int /*index*/, const std::string& sceneId) {
    if (!session_ || !session_->currentPreset()) return;
    const auto& scenes = session_->currentPreset()->scenes;
    const auto found = std::find_if(scenes.begin(), scenes.end(),
                                    [&](const StreamingScene& s) { return s.id.toString() == sceneId; });
    // A scene deleted since the request was answered is not brought back.
    if (found != scenes.end()) session_->switchToScene(StreamingScene(*found));
}

void StreamManagerRemoteBridge::updateLive() {
    if (session_) session_->updateLive();
}

void StreamManagerRemoteBridge::setDrawingModeEnabled(bool enabled) {
    if (session_) session_->drawing().setIsDrawingModeEnabled(enabled);
}

template <typename Change>
void StreamManagerRemoteBridge::changeScene(const std::string& sceneId, Change change) {
    if (!session_) return;
    // The scene rule: copy, change, hand to updateScene. The active scene is
    // the copy the request read; the document's is the fallback.
    std::optional<StreamingScene> scene;
    if (const auto& active = session_->activeScene(); active && active->id.toString() == sceneId) {
        scene = *active;
    } else if (const auto& preset = session_->currentPreset()) {
        const auto found = std::find_if(preset->scenes.begin(), preset->scenes.end(),
                                        [&](const StreamingScene& s) { return s.id.toString() == sceneId; });
        if (found != preset->scenes.end()) scene = *found;
    }
    if (!scene) return;
    change(*scene);
    session_->updateScene(*scene);
}

void StreamManagerRemoteBridge::setSceneProgressBarEnabled(const std::string& sceneId, bool enabled) {
    changeScene(sceneId, [enabled](StreamingScene& scene) { scene.progressBarEnabled = enabled; });
}

void StreamManagerRemoteBridge::setSceneBrandingEnabled(const std::string& sceneId, bool enabled) {
    changeScene(sceneId, [enabled](StreamingScene& scene) { scene.brandingEnabled = enabled; });
}

void StreamManagerRemoteBridge::toggleBlurMode() {
    if (session_) session_->toggleBlurMode();
}

bool StreamManagerRemoteBridge::isRecording() const { return session_ && session_->isRecording(); }

void StreamManagerRemoteBridge::startRecording() {
    if (session_) session_->setIsRecording(true);
}

void StreamManagerRemoteBridge::stopRecording() {
    if (session_) session_->setIsRecording(false);
}

}  // namespace orvane
