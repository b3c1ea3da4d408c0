#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "document/DocumentEnums.h"
#include "document/Preset.h"
#include "document/StreamingScene.h"

namespace orvane {

// What a new preset and a new scene are made of. Templates give scenes
// names only: no sources, no layout chosen to fit the name.

inline constexpr std::string_view defaultSceneIcon = "video.fill";

// The symbols that the add-scene sheet offers, in its order.
inline constexpr std::array<std::string_view, 8> availableIcons{
    "video.fill", "display", "camera.fill", "person.fill",
    "gamecontroller.fill", "mic.fill", "music.note", "star.fill"};

// The one line on a template's card in the create sheet.
std::string_view cardText(PresetTemplate presetTemplate);

// The names of the scenes that a template starts with, in order.
std::vector<std::string_view> templateSceneNames(PresetTemplate presetTemplate);

// A scene as the add-scene sheet and the templates make it: fresh id, the
// given name and icon, no sources, every other field at its default. The
// name is taken as it is, empty included.
StreamingScene makeScene(const std::string& name, const std::string& icon = std::string(defaultSceneIcon));

// One fresh scene per template scene name, each with its own id.
std::vector<StreamingScene> createScenesForTemplate(PresetTemplate presetTemplate);

// A new preset: fresh id, the typed name, the template's scenes with the
// first one active, no branding, progress bar or teleprompter, the program
// stage hidden while popped out, a 1.1 s fade.
Preset createPreset(const std::string& name, PresetTemplate presetTemplate);

}  // namespace orvane
