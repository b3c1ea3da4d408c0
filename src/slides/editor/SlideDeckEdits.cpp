#include "slides/editor/SlideDeckEdits.h"

#include <algorithm>
#include <system_error>

#include "document/Log.h"

namespace orvane {

Uuid SlideDeckEdits::addNewSlide(SlidesResource& deck) {
    Slide slide;
    slide.id = Uuid::generate();
    slide.title = "Slide " + std::to_string(deck.slides.size() + 1);
    slide.content = "# New Slide\n\nStart typing your content here...";
    slide.imageUrl.reset();
    slide.imagePosition = ImagePosition::top;
    slide.imageSize = ImageSize::medium;
    slide.order = static_cast<int>(deck.slides.size());
    slide.textScale = 1.0;
    slide.textAlignment = TextAlignment::leading;
    slide.backgroundColor = {0.1, 0.1, 0.12, 1};
    deck.slides.push_back(slide);
    logLine("➕ New slide added, total slides: " + std::to_string(deck.slides.size()));
    return slide.id;
}

void SlideDeckEdits::deleteSlide(SlidesResource& deck, const Uuid& slideIdIn, std::optional<Uuid>& selected) {
    const Uuid slideId = slideIdIn;  // the caller's may live in the slide that goes
    const auto found = std::find_if(deck.slides.begin(), deck.slides.end(),
                                    [&](const Slide& slide) { return slide.id == slideId; });
    if (found == deck.slides.end()) return;
    deck.slides.erase(found);
    if (selected && *selected == slideId)
        selected = deck.slides.empty() ? std::nullopt : std::optional<Uuid>(deck.slides.front().id);
    renumber(deck);
    logLine("🗑️ Slide deleted, remaining slides: " + std::to_string(deck.slides.size()));
}

void SlideDeckEdits::moveSlide(SlidesResource& deck, int from, int to) {
    const int count = static_cast<int>(deck.slides.size());
    if (from < 0 || from >= count || to < 0 || to >= count || from == to) return;
    Slide moved = deck.slides[static_cast<size_t>(from)];
    deck.slides.erase(deck.slides.begin() + from);
    deck.slides.insert(deck.slides.begin() + to, moved);
    renumber(deck);
}

void SlideDeckEdits::renumber(SlidesResource& deck) {
    for (size_t i = 0; i < deck.slides.size(); ++i) deck.slides[i].order = static_cast<int>(i);
}

std::string MarkdownInsertion::appendTo(const std::string& content) const {
    return content + "\n" + prefix + suffix;
}

const std::vector<MarkdownInsertion>& markdownInsertions() {
    static const std::vector<MarkdownInsertion> buttons = {
        {"B", "Bold", "**", "**"},
        {"I", "Italic", "*", "*"},
        {"S", "Strikethrough", "~~", "~~"},
        {"H1", "Heading 1", "# ", ""},
        {"H2", "Heading 2", "## ", ""},
        {"H3", "Heading 3", "### ", ""},
        {"•", "Bullet List", "- ", ""},
        {"1.", "Numbered List", "1. ", ""},
        {"[ ]", "Link", "[", "](url)"},
        {"</>", "Code", "`", "`"},
    };
    return buttons;
}

const std::vector<BackgroundPreset>& backgroundPresets() {
    static const std::vector<BackgroundPreset> presets = {
        {"Dark Blue", {0.1, 0.1, 0.12, 1}}, {"Black", {0, 0, 0, 1}},     {"White", {1, 1, 1, 1}},
        {"Dark Gray", {0.2, 0.2, 0.2, 1}},  {"Navy", {0.1, 0.2, 0.4, 1}}, {"Purple", {0.3, 0.1, 0.4, 1}},
    };
    return presets;
}

std::optional<std::string> importSlideImage(const std::filesystem::path& chosen,
                                            const std::filesystem::path& temporaryDirectory) {
    namespace fs = std::filesystem;
    const fs::path target = temporaryDirectory / chosen.filename();
    std::error_code error;
    if (fs::exists(target, error)) fs::remove(target, error);
    if (!fs::copy_file(chosen, target, fs::copy_options::overwrite_existing, error)) {
        logLine("Error copying image: " + (error ? error.message() : std::string("the file was not copied")));
        return std::nullopt;
    }
    logLine("📸 Image copied to: " + target.string());
    return target.string();
}

}  // namespace orvane
