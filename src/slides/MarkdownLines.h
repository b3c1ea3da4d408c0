#pragma once

#include <QString>
#include <QStringList>

namespace orvane {

// Line handling shared by the two Markdown readers, which otherwise stay
// apart on purpose.
class MarkdownLines {
public:
    // Splits at every newline character (LF, VT, FF, CR, NEL, LS, PS), so that
    // CR LF gives an empty line between the two.
    static QStringList split(const QString& text);

    // Trims blanks and tabs (and other horizontal spaces) at both ends.
    static QString trimmed(const QString& line);

    // Whether the line starts with digits, a full stop and a blank; the length
    // of that prefix, or 0.
    static int numberedPrefixLength(const QString& line);
};

}  // namespace orvane
