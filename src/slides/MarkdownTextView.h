#pragma once

#include <QString>
#include <vector>

#include "slides/MarkdownElement.h"

namespace orvane {

// The slides editor preview's reading of slide Markdown: three heading
// levels, bullets and numbers, nothing else. Fences, code lines, dividers
// and "#### " headings stay paragraphs here, unlike on the stage
// (MarkdownContentView); the two must not be merged.
class MarkdownTextView {
public:
    static std::vector<MarkdownElement> parseMarkdown(const QString& markdown);

    // Removes every "**", then every remaining "*". Backticks stay.
    static QString processInlineMarkdown(const QString& text);
};

}  // namespace orvane
