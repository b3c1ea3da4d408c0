#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/BrandingConfig.h"
#include "document/ProgressBarConfig.h"
#include "document/SceneTransitionConfig.h"
#include "document/StreamingScene.h"
#include "document/TeleprompterConfig.h"
#include "document/Uuid.h"

namespace orvane {

// The one document: a named production with its scenes and preset-wide
// settings. Compares and hashes by id alone.
struct Preset {
    Uuid id = Uuid::generate();
    std::string name;
    std::vector<StreamingScene> scenes;
    std::optional<Uuid> activeSceneId;
    std::optional<BrandingConfig> branding;
    std::optional<ProgressBarConfig> progressBar;
    bool hideProgramWhenPopout = true;
    std::optional<TeleprompterConfig> teleprompter;
    SceneTransitionConfig sceneTransition;

    friend bool operator==(const Preset& a, const Preset& b) { return a.id == b.id; }
};

}  // namespace orvane

template <>
struct std::hash<orvane::Preset> {
    std::size_t operator()(const orvane::Preset& p) const noexcept { return std::hash<orvane::Uuid>{}(p.id); }
};
