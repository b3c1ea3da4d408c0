#pragma once

#include <QString>
#include <vector>

#include "slides/MarkdownElement.h"

namespace orvane {

// The stage's reading of slide Markdown: the full dialect with code blocks,
// dividers and four heading levels. Kept apart from the editor preview's
// reader (MarkdownTextView), which reads the same text differently.
class MarkdownContentView {
public:
    static std::vector<MarkdownElement> parseMarkdown(const QString& markdown);

    // Removes "**x**", "*x*" and "`x`" marks, in that order, leaving plain
    // text with no styling.
    static QString processInlineMarkdown(const QString& text);
};

}  // namespace orvane
