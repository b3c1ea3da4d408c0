#pragma once

#include <string>

#include "document/CodableColor.h"
#include "document/DocumentEnums.h"
#include "document/HashCombine.h"

namespace orvane {

// Script and look of the floating teleprompter.
struct TeleprompterConfig {
    bool enabled = false;
    std::string text;
    double fontSize = 24;
    CodableColor textColor{1, 1, 1, 1};
    CodableColor backgroundColor{0, 0, 0, 0.8};
    double opacity = 0.9;
    double scrollSpeed = 1.0;  // multiplier
    bool isScrolling = false;
    TeleprompterPosition position = TeleprompterPosition::bottom;
    double width = 800;
    double height = 200;
    bool alwaysOnTop = true;
    bool hideFromScreenShare = true;

    friend bool operator==(const TeleprompterConfig&, const TeleprompterConfig&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::TeleprompterConfig> {
    std::size_t operator()(const orvane::TeleprompterConfig& t) const noexcept {
        return orvane::hashFields(t.enabled, t.text, t.fontSize, t.textColor, t.backgroundColor, t.opacity,
                                  t.scrollSpeed, t.isScrolling, t.position, t.width, t.height, t.alwaysOnTop,
                                  t.hideFromScreenShare);
    }
};
