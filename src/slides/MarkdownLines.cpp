#include "slides/MarkdownLines.h"

#include <QRegularExpression>

namespace orvane {

namespace {

bool isNewline(QChar c) {
    const char16_t u = c.unicode();
    return (u >= 0x0A && u <= 0x0D) || u == 0x85 || u == 0x2028 || u == 0x2029;
}

bool isHorizontalSpace(QChar c) {
    return c == QLatin1Char('\t') || c.category() == QChar::Separator_Space;
}

}  // namespace

QStringList MarkdownLines::split(const QString& text) {
    QStringList lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isNewline(text[i])) {
            lines.append(text.mid(start, i - start));
            start = i + 1;
        }
    }
    lines.append(text.mid(start));
    return lines;
}

QString MarkdownLines::trimmed(const QString& line) {
    qsizetype begin = 0;
    qsizetype end = line.size();
    while (begin < end && isHorizontalSpace(line[begin])) ++begin;
    while (end > begin && isHorizontalSpace(line[end - 1])) --end;
    return line.mid(begin, end - begin);
}

int MarkdownLines::numberedPrefixLength(const QString& line) {
    static const QRegularExpression pattern(QStringLiteral("^\\d+\\.\\s"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = pattern.match(line);
    return match.hasMatch() ? static_cast<int>(match.capturedLength()) : 0;
}

}  // namespace orvane
