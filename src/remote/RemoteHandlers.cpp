#include "remote/RemoteHandlers.h"

#include <charconv>
#include <nlohmann/json.hpp>
#include <string>

#include "remote/HttpResponses.h"

namespace orvane {

namespace {

using Json = nlohmann::ordered_json;  // keys in the order the handlers add them

std::string jsonResponse(const Json& body) {
    try {
        return createHTTPResponse(body.dump(), "application/json");
    } catch (const Json::exception&) {
        // A name that is not valid UTF-8 makes the serializer refuse the map.
        return createInternalErrorResponse();
    }
}

RemoteReply errorReply(const char* message) { return {jsonResponse(Json{{"error", message}}), std::nullopt}; }

RemoteAction makeAction(RemoteAction::Kind kind, bool value = false, std::string sceneId = {}) {
    RemoteAction action;
    action.kind = kind;
    action.value = value;
    action.sceneId = std::move(sceneId);
    return action;
}

constexpr const char* kSessionGone = "StreamManager not available";

RemoteReply toggleSceneFlag(const RemoteSessionSnapshot* session, bool RemoteSceneState::*flag,
                            RemoteAction::Kind kind) {
    if (!session || !session->activeScene) return errorReply("No active scene");
    const RemoteSceneState& scene = *session->activeScene;
    const bool enabled = !(scene.*flag);
    return {jsonResponse(Json{{"success", true}, {"isEnabled", enabled}}), makeAction(kind, enabled, scene.id)};
}

}  // namespace

std::optional<std::int64_t> parseSceneIndex(std::string_view text) {
    if (text.empty()) return std::nullopt;
    if (text.front() == '+') {
        text.remove_prefix(1);
        if (text.empty() || text.front() < '0' || text.front() > '9') return std::nullopt;
    }
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, value, 10);
    if (ec != std::errc{} || ptr != end) return std::nullopt;
    return value;
}

RemoteReply createScenesResponse(const RemoteSessionSnapshot* session) {
    if (!session || !session->hasPreset) return errorReply("No preset available");
    Json scenes = Json::array();
    int activeIndex = -1;
    for (std::size_t i = 0; i < session->scenes.size(); ++i) {
        const auto& scene = session->scenes[i];
        const bool isActive = session->activeScene && scene.id == session->activeScene->id;
        if (isActive && activeIndex < 0) activeIndex = static_cast<int>(i);
        scenes.push_back(Json{{"name", scene.name}, {"index", i}, {"isActive", isActive}});
    }
    return {jsonResponse(Json{{"scenes", std::move(scenes)}, {"activeScene", activeIndex}}), std::nullopt};
}

RemoteReply createStatusResponse(const RemoteSessionSnapshot* session) {
    if (!session) return errorReply(kSessionGone);
    Json body{
        {"isRecording", session->isRecording},
        {"isStreaming", session->isStreaming},
        {"activeScene", session->activeScene ? session->activeScene->name : std::string("None")},
        {"programScene", session->programScene ? session->programScene->name : std::string("None")},
    };
    return {jsonResponse(body), std::nullopt};
}

RemoteReply handleSceneChange(std::string_view indexText, const RemoteSessionSnapshot* session) {
    const auto index = parseSceneIndex(indexText);
    if (!index || !session || !session->hasPreset) return errorReply("Invalid scene index");
    if (*index < 0 || *index >= static_cast<std::int64_t>(session->scenes.size()))
        return errorReply("Invalid scene index");
    const auto& scene = session->scenes[static_cast<std::size_t>(*index)];
    RemoteAction action = makeAction(RemoteAction::Kind::switchToScene, false, scene.id);
    action.sceneIndex = static_cast<int>(*index);
    action.sceneName = scene.name;
    return {jsonResponse(Json{{"success", true}, {"scene", scene.name}}), action};
}

RemoteReply handleLiveUpdate(const RemoteSessionSnapshot* session) {
    if (!session) return errorReply(kSessionGone);
    return {jsonResponse(Json{{"success", true}, {"message", "Live updated"}}),
            makeAction(RemoteAction::Kind::updateLive)};
}

RemoteReply handleRecordingToggle(const RemoteSessionSnapshot* session) {
    if (!session) return errorReply(kSessionGone);
    return {jsonResponse(Json{{"success", true}, {"isRecording", !session->isRecording}}),
            makeAction(RemoteAction::Kind::toggleRecording)};
}

RemoteReply handleDrawingToggle(const RemoteSessionSnapshot* session) {
    if (!session) return errorReply(kSessionGone);
    const bool enabled = !session->isDrawingModeEnabled;
    return {jsonResponse(Json{{"success", true}, {"isEnabled", enabled}}),
            makeAction(RemoteAction::Kind::setDrawingMode, enabled)};
}

RemoteReply handleProgressToggle(const RemoteSessionSnapshot* session) {
    return toggleSceneFlag(session, &RemoteSceneState::progressBarEnabled, RemoteAction::Kind::setSceneProgressBar);
}

RemoteReply handleBrandingToggle(const RemoteSessionSnapshot* session) {
    return toggleSceneFlag(session, &RemoteSceneState::brandingEnabled, RemoteAction::Kind::setSceneBranding);
}

RemoteReply handleBlurToggle(const RemoteSessionSnapshot* session) {
    if (!session) return errorReply(kSessionGone);
    return {jsonResponse(Json{{"success", true}, {"isEnabled", !session->isBlurModeActive}}),
            makeAction(RemoteAction::Kind::toggleBlurMode)};
}

}  // namespace orvane
