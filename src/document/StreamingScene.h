#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/CodableColor.h"
#include "document/DocumentEnums.h"
#include "document/Source.h"
#include "document/Uuid.h"

namespace orvane {

// One switchable picture of a production. Compares and hashes by id alone:
// two versions of a scene are equal, so changes are never detected by
// comparing scenes.
struct StreamingScene {
    Uuid id = Uuid::generate();
    std::string name;
    std::string icon = "video.fill";
    std::vector<Source> sources;
    std::optional<Uuid> selectedSourceId;
    bool brandingEnabled = true;
    bool progressBarEnabled = true;
    CodableColor backgroundColor{0, 0, 0, 1};
    BackgroundType backgroundType = BackgroundType::gradient;
    std::vector<CodableColor> gradientColors{{0.1, 0.3, 0.5, 1}, {0.2, 0.5, 0.7, 1}, {0.3, 0.7, 0.8, 1}};
    GradientDirection gradientDirection = GradientDirection::topToBottom;
    SceneLayout layout = SceneLayout::fullCamera;
    bool cinematicZoomEnabled = false;

    // The first source whose id is selectedSourceId, or none.
    const Source* selectedSource() const;
    Source* selectedSource();

    friend bool operator==(const StreamingScene& a, const StreamingScene& b) { return a.id == b.id; }
};

}  // namespace orvane

template <>
struct std::hash<orvane::StreamingScene> {
    std::size_t operator()(const orvane::StreamingScene& s) const noexcept {
        return std::hash<orvane::Uuid>{}(s.id);
    }
};
