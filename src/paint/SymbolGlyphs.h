#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace orvane {

// One symbol name of the interface and the Material Icons glyph that stands
// for it.
struct SymbolGlyph {
    std::string_view symbol;    // the name the interface uses, e.g. "video.fill"
    std::string_view material;  // the Material Icons name, e.g. "videocam"
    char32_t codepoint;
};

// The one table from symbol names to glyphs of the Material Icons font.
class SymbolGlyphs {
public:
    static std::span<const SymbolGlyph> all();
    static std::optional<SymbolGlyph> find(std::string_view symbol);
};

}  // namespace orvane
