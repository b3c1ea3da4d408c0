#pragma once

#include "document/DocumentEnums.h"
#include "document/HashCombine.h"

namespace orvane {

// How going live plays.
struct SceneTransitionConfig {
    bool enabled = true;
    TransitionType type = TransitionType::fade;
    double duration = 1.1;  // seconds

    friend bool operator==(const SceneTransitionConfig&, const SceneTransitionConfig&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::SceneTransitionConfig> {
    std::size_t operator()(const orvane::SceneTransitionConfig& c) const noexcept {
        return orvane::hashFields(c.enabled, c.type, c.duration);
    }
};
