#include "document/SlidesResource.h"

namespace orvane {

SlidesResource SlidesResource::makeNew(const std::string& title) {
    SlidesResource deck;
    deck.title = title;
    Slide welcome;
    welcome.title = "Welcome";
    welcome.content = "# Welcome to Slides\n\nStart creating your presentation!";
    deck.slides.push_back(welcome);
    return deck;
}

}  // namespace orvane
