#include "SessionDouble.h"

#include <memory>

#include "remote/WebServerManager.h"

namespace orvane::test {

SessionDouble::SessionDouble(WebServerManager* server, QObject* parent) : QObject(parent), server_(server) {
    server_->setActions(this);
    server_->setRecordingControl(this);
    publish();
}

void SessionDouble::loadPreset(const std::vector<std::string>& names, std::optional<int> activeIndex) {
    hasPreset_ = true;
    scenes_.clear();
    for (const auto& name : names) scenes_.push_back({"SCENE-" + std::to_string(nextId_++), name});
    activeId_.reset();
    if (activeIndex && *activeIndex >= 0 && *activeIndex < static_cast<int>(scenes_.size()))
        activeId_ = scenes_[*activeIndex].id;
    publish();
}

void SessionDouble::unloadPreset() {
    hasPreset_ = false;
    scenes_.clear();
    activeId_.reset();
    publish();
}

void SessionDouble::setActiveIndex(std::optional<int> index) {
    activeId_.reset();
    if (index) activeId_ = scenes_.at(static_cast<std::size_t>(*index)).id;
    publish();
}

void SessionDouble::setStreaming(bool streaming) {
    streaming_ = streaming;
    publish();
}

void SessionDouble::detach() {
    attached_ = false;
    server_->setActions(nullptr);
    server_->setRecordingControl(nullptr);
    server_->publishSession(nullptr);
}

std::optional<int> SessionDouble::activeIndex() const {
    for (std::size_t i = 0; i < scenes_.size(); ++i)
        if (activeId_ && scenes_[i].id == *activeId_) return static_cast<int>(i);
    return std::nullopt;
}

void SessionDouble::switchToScene(int index, const std::string& sceneId) {
    ++actionsApplied_;
    if (!sceneById(sceneId)) return;  // the preset changed since the request
    (void)index;
    activeId_ = sceneId;
    publish();
}

void SessionDouble::updateLive() {
    ++actionsApplied_;
    ++liveUpdates_;
    const auto index = activeIndex();
    if (!index) return;
    program_ = scenes_[static_cast<std::size_t>(*index)];
    program_->id = "PROGRAM-" + std::to_string(nextId_++);
    publish();
}

void SessionDouble::setDrawingModeEnabled(bool enabled) {
    ++actionsApplied_;
    drawing_ = enabled;
    publish();
}

void SessionDouble::setSceneProgressBarEnabled(const std::string& sceneId, bool enabled) {
    ++actionsApplied_;
    if (auto* scene = sceneById(sceneId)) scene->progressBarEnabled = enabled;
    publish();
}

void SessionDouble::setSceneBrandingEnabled(const std::string& sceneId, bool enabled) {
    ++actionsApplied_;
    if (auto* scene = sceneById(sceneId)) scene->brandingEnabled = enabled;
    publish();
}

void SessionDouble::toggleBlurMode() {
    ++actionsApplied_;
    blur_ = !blur_;
    publish();
}

void SessionDouble::startRecording() {
    ++actionsApplied_;
    recording_ = true;
    publish();
}

void SessionDouble::stopRecording() {
    ++actionsApplied_;
    recording_ = false;
    publish();
}

SessionDouble::Scene* SessionDouble::sceneById(const std::string& id) {
    for (auto& scene : scenes_)
        if (scene.id == id) return &scene;
    return nullptr;
}

void SessionDouble::publish() {
    if (!attached_) return;
    auto snapshot = std::make_shared<RemoteSessionSnapshot>();
    snapshot->hasPreset = hasPreset_;
    for (const auto& scene : scenes_) snapshot->scenes.push_back({scene.id, scene.name});
    if (const auto index = activeIndex()) {
        const auto& scene = scenes_[static_cast<std::size_t>(*index)];
        snapshot->activeScene = RemoteSceneState{scene.id, scene.name, scene.progressBarEnabled, scene.brandingEnabled};
    }
    if (program_)
        snapshot->programScene =
            RemoteSceneState{program_->id, program_->name, program_->progressBarEnabled, program_->brandingEnabled};
    snapshot->isRecording = recording_;
    snapshot->isStreaming = streaming_;
    snapshot->isDrawingModeEnabled = drawing_;
    snapshot->isBlurModeActive = blur_;
    server_->publishSession(std::move(snapshot));
    emit changed();
}

}  // namespace orvane::test
