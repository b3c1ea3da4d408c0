#pragma once

#include <QString>

#include "document/Uuid.h"

namespace orvane {

// One line's worth of a slide's Markdown (a code block spans several lines).
struct MarkdownElement {
    enum class ElementType { h1, h2, h3, paragraph, bullet, numbered, codeBlock, divider };

    Uuid id = Uuid::generate();  // fresh on every parse
    ElementType type = ElementType::paragraph;
    QString content;
};

}  // namespace orvane
