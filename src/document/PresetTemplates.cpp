#include "document/PresetTemplates.h"

namespace orvane {

std::string_view cardText(PresetTemplate presetTemplate) {
    switch (presetTemplate) {
    case PresetTemplate::streaming: return "3 empty scenes for streaming";
    case PresetTemplate::presentation: return "3 empty scenes for presentations";
    case PresetTemplate::gaming: return "3 empty scenes for gaming";
    case PresetTemplate::custom: return "Empty preset, add your own scenes";
    }
    return {};
}

std::vector<std::string_view> templateSceneNames(PresetTemplate presetTemplate) {
    switch (presetTemplate) {
    case PresetTemplate::streaming: return {"Screen Only", "Screen + Webcam", "Webcam Focus"};
    case PresetTemplate::presentation: return {"Slides Only", "Picture in Picture", "Speaker Focus"};
    case PresetTemplate::gaming: return {"Game Only", "Game + Webcam", "Intermission"};
    case PresetTemplate::custom: return {"Scene 1"};
    }
    return {};
}

StreamingScene makeScene(const std::string& name, const std::string& icon) {
    // The record's own initialisers are the defaults of a new scene.
    StreamingScene scene;
    scene.name = name;
    scene.icon = icon;
    return scene;
}

std::vector<StreamingScene> createScenesForTemplate(PresetTemplate presetTemplate) {
    std::vector<StreamingScene> scenes;
    for (std::string_view name : templateSceneNames(presetTemplate)) scenes.push_back(makeScene(std::string(name)));
    return scenes;
}

Preset createPreset(const std::string& name, PresetTemplate presetTemplate) {
    Preset preset;
    preset.name = name;
    preset.scenes = createScenesForTemplate(presetTemplate);
    if (!preset.scenes.empty()) preset.activeSceneId = preset.scenes.front().id;
    preset.hideProgramWhenPopout = true;
    preset.sceneTransition = SceneTransitionConfig{true, TransitionType::fade, 1.1};
    return preset;
}

}  // namespace orvane
