#pragma once

#include <string>
#include <vector>

#include "document/CodableColor.h"
#include "document/Slide.h"
#include "document/Uuid.h"

namespace orvane {

// A slide deck with its shared settings and the page on show. Compares and
// hashes by id alone.
struct SlidesResource {
    Uuid id = Uuid::generate();
    std::string title;
    std::vector<Slide> slides;
    int currentSlideIndex = 0;  // not checked against the slide count
    CodableColor backgroundColor{0.1, 0.1, 0.12, 1};
    CodableColor textColor{1, 1, 1, 1};
    CodableColor accentColor{0.6, 0.4, 0.9, 1};
    double textScale = 1.0;
    TextAlignment textAlignment = TextAlignment::leading;

    // The deck a new slides source starts with: one welcome page.
    static SlidesResource makeNew(const std::string& title);

    friend bool operator==(const SlidesResource& a, const SlidesResource& b) { return a.id == b.id; }
};

}  // namespace orvane

template <>
struct std::hash<orvane::SlidesResource> {
    std::size_t operator()(const orvane::SlidesResource& r) const noexcept {
        return std::hash<orvane::Uuid>{}(r.id);
    }
};
