#include "slides/MarkdownContentView.h"

#include <QRegularExpression>

#include "slides/MarkdownLines.h"

namespace orvane {

namespace {

using Type = MarkdownElement::ElementType;

MarkdownElement element(Type type, QString content) {
    MarkdownElement e;
    e.type = type;
    e.content = std::move(content);
    return e;
}

// Each match of `pattern`, last to first, has every occurrence of its whole
// marked text in the (current) text replaced by its inner text.
QString unmark(QString text, const QRegularExpression& pattern, const QString& mark) {
    std::vector<QString> inners;
    auto it = pattern.globalMatch(text);
    while (it.hasNext()) inners.push_back(it.next().captured(1));
    for (auto i = inners.rbegin(); i != inners.rend(); ++i) text.replace(mark + *i + mark, *i);
    return text;
}

}  // namespace

std::vector<MarkdownElement> MarkdownContentView::parseMarkdown(const QString& markdown) {
    std::vector<MarkdownElement> out;
    bool inCodeBlock = false;
    QString code;
    for (const QString& line : MarkdownLines::split(markdown)) {
        if (line.startsWith(QLatin1String("```"))) {
            if (inCodeBlock) {
                out.push_back(element(Type::codeBlock, code));
                code.clear();
                inCodeBlock = false;
            } else {
                inCodeBlock = true;
            }
            continue;
        }
        if (inCodeBlock) {
            code += line;
            code += QLatin1Char('\n');
            continue;
        }
        if (line.startsWith(QLatin1String("# "))) {
            out.push_back(element(Type::h1, line.mid(2)));
        } else if (line.startsWith(QLatin1String("## "))) {
            out.push_back(element(Type::h2, line.mid(3)));
        } else if (line.startsWith(QLatin1String("### "))) {
            out.push_back(element(Type::h3, line.mid(4)));
        } else if (line.startsWith(QLatin1String("#### "))) {
            out.push_back(element(Type::h3, line.mid(5)));
        } else if (line.startsWith(QLatin1String("- ")) || line.startsWith(QLatin1String("* "))) {
            out.push_back(element(Type::bullet, line.mid(2)));
        } else if (const int prefix = MarkdownLines::numberedPrefixLength(line); prefix > 0) {
            out.push_back(element(Type::numbered, line.mid(prefix)));
        } else {
            const QString trimmed = MarkdownLines::trimmed(line);
            if (trimmed == QLatin1String("---") || trimmed == QLatin1String("***"))
                out.push_back(element(Type::divider, QString()));
            else if (!trimmed.isEmpty())
                out.push_back(element(Type::paragraph, line));
        }
    }
    // A code block still open at the end is dropped with its lines.
    return out;
}

QString MarkdownContentView::processInlineMarkdown(const QString& text) {
    static const QRegularExpression bold(QStringLiteral("\\*\\*(.*?)\\*\\*"));
    static const QRegularExpression italic(QStringLiteral("\\*(.*?)\\*"));
    static const QRegularExpression code(QStringLiteral("`(.*?)`"));
    QString out = unmark(text, bold, QStringLiteral("**"));
    out = unmark(out, italic, QStringLiteral("*"));
    return unmark(out, code, QStringLiteral("`"));
}

}  // namespace orvane
