#pragma once

#include <optional>
#include <string>

#include "document/CodableColor.h"
#include "document/DocumentEnums.h"
#include "document/Uuid.h"

namespace orvane {

// One page of a deck: Markdown text with an optional picture. The one
// record that reads tolerantly (a missing key takes the value below).
struct Slide {
    Uuid id = Uuid::generate();
    std::string title;
    std::string content;
    std::optional<std::string> imageUrl;
    ImagePosition imagePosition = ImagePosition::top;
    ImageSize imageSize = ImageSize::medium;
    int order = 0;
    double textScale = 1.0;
    TextAlignment textAlignment = TextAlignment::leading;
    CodableColor backgroundColor{0.1, 0.1, 0.12, 1};

    friend bool operator==(const Slide&, const Slide&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::Slide> {
    std::size_t operator()(const orvane::Slide& s) const noexcept {
        return orvane::hashFields(s.id, s.title, s.content, s.imageUrl, s.imagePosition, s.imageSize,
                                  s.order, s.textScale, s.textAlignment, s.backgroundColor);
    }
};
