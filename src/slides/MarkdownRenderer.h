#pragma once

#include <QColor>
#include <QRectF>
#include <vector>

#include "document/DocumentEnums.h"
#include "slides/MarkdownElement.h"
#include "slides/MarkdownStyle.h"

class QPainter;
class QPaintDevice;

namespace orvane {

// Draws parsed Markdown as a column of elements from the top of an area.
// Both readers share this; what differs is the style and the inline mark
// removal passed in.
class MarkdownRenderer {
public:
    using InlineMarks = QString (*)(const QString&);

    struct Colors {
        QColor text;
        QColor accent;
    };

    // Paints when `painter` is given and only measures otherwise; returns the
    // column's height. `device` sizes the fonts (the painter's device).
    static double render(QPainter* painter, const QPaintDevice* device, QRectF area,
                         const std::vector<MarkdownElement>& elements, const MarkdownStyle& style, Colors colors,
                         TextAlignment alignment, InlineMarks inlineMarks);
};

}  // namespace orvane
