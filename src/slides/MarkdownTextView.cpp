#include "slides/MarkdownTextView.h"

#include "slides/MarkdownLines.h"

namespace orvane {

namespace {

using Type = MarkdownElement::ElementType;

MarkdownElement textElement(Type type, QString content) {
    MarkdownElement e;
    e.type = type;
    e.content = std::move(content);
    return e;
}

}  // namespace

std::vector<MarkdownElement> MarkdownTextView::parseMarkdown(const QString& markdown) {
    std::vector<MarkdownElement> out;
    for (const QString& line : MarkdownLines::split(markdown)) {
        if (line.startsWith(QLatin1String("# "))) {
            out.push_back(textElement(Type::h1, line.mid(2)));
        } else if (line.startsWith(QLatin1String("## "))) {
            out.push_back(textElement(Type::h2, line.mid(3)));
        } else if (line.startsWith(QLatin1String("### "))) {
            out.push_back(textElement(Type::h3, line.mid(4)));
        } else if (line.startsWith(QLatin1String("- ")) || line.startsWith(QLatin1String("* "))) {
            out.push_back(textElement(Type::bullet, line.mid(2)));
        } else if (const int prefix = MarkdownLines::numberedPrefixLength(line); prefix > 0) {
            out.push_back(textElement(Type::numbered, line.mid(prefix)));
        } else if (!MarkdownLines::trimmed(line).isEmpty()) {
            out.push_back(textElement(Type::paragraph, line));
        }
    }
    return out;
}

QString MarkdownTextView::processInlineMarkdown(const QString& text) {
    QString out = text;
    out.remove(QStringLiteral("**"));
    out.remove(QLatin1Char('*'));
    return out;
}

}  // namespace orvane
