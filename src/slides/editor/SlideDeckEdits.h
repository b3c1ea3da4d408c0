#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "document/CodableColor.h"
#include "document/SlidesResource.h"
#include "document/Uuid.h"

namespace orvane {

// The structural edits of a deck, as the editor makes them. After each, the
// slides' `order` equals their place in the array, which is what the stages
// show.
class SlideDeckEdits {
public:
    // Appends "Slide N" with the starter text and selects it; returns its id.
    static Uuid addNewSlide(SlidesResource& deck);

    // Removes a slide. A removed selection moves to the first remaining
    // slide, or to none when the deck is empty.
    static void deleteSlide(SlidesResource& deck, const Uuid& slideId, std::optional<Uuid>& selected);

    // Moves the slide at `from` to `to`; indexes out of range change nothing.
    static void moveSlide(SlidesResource& deck, int from, int to);

    // Every slide's order set to its place, from 0.
    static void renumber(SlidesResource& deck);
};

// A Markdown toolbar button: what it appends to the end of the text.
struct MarkdownInsertion {
    const char* label;  // what the button shows
    const char* tooltip;
    const char* prefix;
    const char* suffix;

    // The content with a line feed, the prefix and the suffix appended,
    // wherever the cursor is.
    std::string appendTo(const std::string& content) const;
};

// The ten buttons, in the toolbar's order.
const std::vector<MarkdownInsertion>& markdownInsertions();

// A named slide background of the editor's fixed table.
struct BackgroundPreset {
    const char* name;
    CodableColor color;
};

const std::vector<BackgroundPreset>& backgroundPresets();

// Copies a chosen picture into the temporary directory under its own file
// name (replacing what is there) and returns the copy's path; on failure
// logs "Error copying image: " and returns none.
std::optional<std::string> importSlideImage(const std::filesystem::path& chosen,
                                            const std::filesystem::path& temporaryDirectory);

}  // namespace orvane
