#include <gtest/gtest.h>

#include "slides/MarkdownContentView.h"
#include "slides/MarkdownTextView.h"

namespace orvane {
namespace markdown_reader_test {

using Type = MarkdownElement::ElementType;

struct Expected {
    Type type;
    QString content;
    friend bool operator==(const Expected&, const Expected&) = default;
};

std::vector<Expected> simple(const std::vector<MarkdownElement>& elements) {
    std::vector<Expected> out;
    for (const auto& e : elements) out.push_back({e.type, e.content});
    return out;
}

std::vector<Expected> stage(const QString& text) { return simple(MarkdownContentView::parseMarkdown(text)); }
std::vector<Expected> preview(const QString& text) { return simple(MarkdownTextView::parseMarkdown(text)); }

void PrintTo(const Expected& e, std::ostream* os) { *os << int(e.type) << ":" << e.content.toStdString(); }

TEST(StageReader, Headings) {
    EXPECT_EQ(stage("# One"), (std::vector<Expected>{{Type::h1, "One"}}));
    EXPECT_EQ(stage("## Two"), (std::vector<Expected>{{Type::h2, "Two"}}));
    EXPECT_EQ(stage("### Three"), (std::vector<Expected>{{Type::h3, "Three"}}));
    EXPECT_EQ(stage("#### Four"), (std::vector<Expected>{{Type::h3, "Four"}}));
    EXPECT_EQ(stage("##### Five"), (std::vector<Expected>{{Type::paragraph, "##### Five"}}));
    EXPECT_EQ(stage("#No blank"), (std::vector<Expected>{{Type::paragraph, "#No blank"}}));
    // Not trimmed first: an indented heading is a paragraph, kept whole.
    EXPECT_EQ(stage("  # Title"), (std::vector<Expected>{{Type::paragraph, "  # Title"}}));
}

TEST(StageReader, ListsAndNumbers) {
    EXPECT_EQ(stage("- a\n* b"), (std::vector<Expected>{{Type::bullet, "a"}, {Type::bullet, "b"}}));
    EXPECT_EQ(stage("1. one"), (std::vector<Expected>{{Type::numbered, "one"}}));
    EXPECT_EQ(stage("12. x"), (std::vector<Expected>{{Type::numbered, "x"}}));
    EXPECT_EQ(stage("1) one"), (std::vector<Expected>{{Type::paragraph, "1) one"}}));
    EXPECT_EQ(stage("1.one"), (std::vector<Expected>{{Type::paragraph, "1.one"}}));
    EXPECT_EQ(stage("3.\tthree"), (std::vector<Expected>{{Type::numbered, "three"}}));
    // The bullet rule comes first: "* * *" is a bullet, "---" is not.
    EXPECT_EQ(stage("* * *"), (std::vector<Expected>{{Type::bullet, "* *"}}));
    EXPECT_EQ(stage("-no"), (std::vector<Expected>{{Type::paragraph, "-no"}}));
}

TEST(StageReader, DividersAndBlankLines) {
    EXPECT_EQ(stage("---"), (std::vector<Expected>{{Type::divider, ""}}));
    EXPECT_EQ(stage("***"), (std::vector<Expected>{{Type::divider, ""}}));
    EXPECT_EQ(stage("  ---  "), (std::vector<Expected>{{Type::divider, ""}}));
    EXPECT_EQ(stage("\t***"), (std::vector<Expected>{{Type::divider, ""}}));
    EXPECT_EQ(stage("----"), (std::vector<Expected>{{Type::paragraph, "----"}}));
    EXPECT_TRUE(stage("").empty());
    EXPECT_TRUE(stage("   \n\t\n").empty());
    EXPECT_EQ(stage("  text  "), (std::vector<Expected>{{Type::paragraph, "  text  "}}));
}

TEST(StageReader, CodeBlocks) {
    EXPECT_EQ(stage("```text\nlet x = 1\n```"), (std::vector<Expected>{{Type::codeBlock, "let x = 1\n"}}));
    // Inside a block nothing else is read, blank lines included.
    EXPECT_EQ(stage("```\n# not a heading\n\n- nor a bullet\n```"),
              (std::vector<Expected>{{Type::codeBlock, "# not a heading\n\n- nor a bullet\n"}}));
    EXPECT_EQ(stage("```\n```"), (std::vector<Expected>{{Type::codeBlock, ""}}));
    // Never closed: dropped with all its lines.
    EXPECT_TRUE(stage("```\na\nb").empty());
    EXPECT_EQ(stage("# T\n```\na"), (std::vector<Expected>{{Type::h1, "T"}}));
}

TEST(StageReader, LineBreaks) {
    // CR LF gives an empty line in between, which emits nothing.
    EXPECT_EQ(stage("# A\r\nb"), (std::vector<Expected>{{Type::h1, "A"}, {Type::paragraph, "b"}}));
    EXPECT_EQ(stage("```\r\nx\r\n```"), (std::vector<Expected>{{Type::codeBlock, "\nx\n\n"}}));
    EXPECT_EQ(stage(QString("a") + QChar(0x2028) + "b"),
              (std::vector<Expected>{{Type::paragraph, "a"}, {Type::paragraph, "b"}}));
    EXPECT_EQ(stage("a\rb"), (std::vector<Expected>{{Type::paragraph, "a"}, {Type::paragraph, "b"}}));
}

TEST(StageReader, FreshIdsOnEachParse) {
    const auto a = MarkdownContentView::parseMarkdown("x");
    const auto b = MarkdownContentView::parseMarkdown("x");
    ASSERT_EQ(a.size(), 1u);
    EXPECT_NE(a[0].id, b[0].id);
}

TEST(StageInline, RemovesMarksWithoutStyle) {
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("**a** and *b*"), "a and b");
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("`code` here"), "code here");
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("2 * 3"), "2 * 3");
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("lone ` tick"), "lone ` tick");
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("**bold** **bold**"), "bold bold");
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("***x***"), "x");
    // Two stars with nothing between are an empty italic: removed.
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("a ** b"), "a  b");
    EXPECT_EQ(MarkdownContentView::processInlineMarkdown("****"), "");
}

TEST(PreviewReader, Dialect) {
    EXPECT_EQ(preview("# One\n## Two\n### Three"),
              (std::vector<Expected>{{Type::h1, "One"}, {Type::h2, "Two"}, {Type::h3, "Three"}}));
    EXPECT_EQ(preview("#### Four"), (std::vector<Expected>{{Type::paragraph, "#### Four"}}));
    EXPECT_EQ(preview("#No blank"), (std::vector<Expected>{{Type::paragraph, "#No blank"}}));
    EXPECT_EQ(preview("- a\n* b"), (std::vector<Expected>{{Type::bullet, "a"}, {Type::bullet, "b"}}));
    EXPECT_EQ(preview("1. one\n1) two\n12. x"),
              (std::vector<Expected>{{Type::numbered, "one"}, {Type::paragraph, "1) two"}, {Type::numbered, "x"}}));
    EXPECT_TRUE(preview("").empty());
    EXPECT_TRUE(preview(" \t ").empty());
}

TEST(PreviewReader, NoCodeBlocksNoDividers) {
    EXPECT_EQ(preview("```text\nlet x = 1\n```"), (std::vector<Expected>{{Type::paragraph, "```text"},
                                                                          {Type::paragraph, "let x = 1"},
                                                                          {Type::paragraph, "```"}}));
    EXPECT_EQ(preview("  ---  "), (std::vector<Expected>{{Type::paragraph, "  ---  "}}));
    EXPECT_EQ(preview("***"), (std::vector<Expected>{{Type::paragraph, "***"}}));
}

TEST(PreviewInline, RemovesEveryStarAndKeepsBackticks) {
    EXPECT_EQ(MarkdownTextView::processInlineMarkdown("**a** and *b*"), "a and b");
    EXPECT_EQ(MarkdownTextView::processInlineMarkdown("2 * 3"), "2  3");
    EXPECT_EQ(MarkdownTextView::processInlineMarkdown("`code`"), "`code`");
    EXPECT_EQ(MarkdownTextView::processInlineMarkdown("***"), "");
}

// Where the two readers part ways, in one table: the same text, what the
// stage makes of it and what the editor preview makes of it.
struct Difference {
    const char* text;
    std::vector<Expected> stage;
    std::vector<Expected> preview;
};

TEST(ReaderDifferences, Table) {
    const std::vector<Difference> table = {
        {"#### Four", {{Type::h3, "Four"}}, {{Type::paragraph, "#### Four"}}},
        {"---", {{Type::divider, ""}}, {{Type::paragraph, "---"}}},
        {"***", {{Type::divider, ""}}, {{Type::paragraph, "***"}}},
        {"  ---  ", {{Type::divider, ""}}, {{Type::paragraph, "  ---  "}}},
        {"```text\nlet x = 1\n```",
         {{Type::codeBlock, "let x = 1\n"}},
         {{Type::paragraph, "```text"}, {Type::paragraph, "let x = 1"}, {Type::paragraph, "```"}}},
        {"```\na\nb", {}, {{Type::paragraph, "```"}, {Type::paragraph, "a"}, {Type::paragraph, "b"}}},
        {"```\n# h\n```", {{Type::codeBlock, "# h\n"}}, {{Type::paragraph, "```"}, {Type::h1, "h"}, {Type::paragraph, "```"}}},
    };
    for (const Difference& d : table) {
        EXPECT_EQ(stage(d.text), d.stage) << d.text;
        EXPECT_EQ(preview(d.text), d.preview) << d.text;
        EXPECT_NE(d.stage, d.preview) << d.text;
    }
    // The inline marks differ too.
    const struct {
        const char* text;
        const char* stage;
        const char* preview;
    } marks[] = {
        {"2 * 3", "2 * 3", "2  3"},
        {"`code`", "code", "`code`"},
        {"a*b", "a*b", "ab"},
    };
    for (const auto& m : marks) {
        EXPECT_EQ(MarkdownContentView::processInlineMarkdown(m.text), m.stage) << m.text;
        EXPECT_EQ(MarkdownTextView::processInlineMarkdown(m.text), m.preview) << m.text;
    }
}

TEST(ReaderAgreement, CommonLinesReadAlike) {
    for (const char* text : {"# T", "## T", "### T", "- a", "* a", "1. a", "plain", "#No", "", "  "})
        EXPECT_EQ(stage(text), preview(text)) << text;
}

}  // namespace
}  // namespace orvane
