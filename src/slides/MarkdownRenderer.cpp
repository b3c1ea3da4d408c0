#include "slides/MarkdownRenderer.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "paint/PixelFont.h"

namespace orvane {

namespace {

using Type = MarkdownElement::ElementType;

Qt::Alignment horizontal(TextAlignment alignment) {
    switch (alignment) {
    case TextAlignment::leading: return Qt::AlignLeft;
    case TextAlignment::center: return Qt::AlignHCenter;
    case TextAlignment::trailing: return Qt::AlignRight;
    }
    return Qt::AlignLeft;
}

// Wraps `text` to `width` and draws it from `top`; returns the height.
double textBlock(QPainter* painter, const QPaintDevice* device, double left, double top, double width,
                 const QString& text, const QFont& font, const QColor& color, Qt::Alignment alignment,
                 double extraLineSpacing) {
    // The layout breaks lines only at line separators, not at line feeds.
    QString laidOut = text;
    laidOut.replace(QLatin1Char('\n'), QChar::LineSeparator);
    QTextLayout layout(laidOut, font, const_cast<QPaintDevice*>(device));
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const double lineHeight = PixelFont::metrics(font, device).height();
    double y = 0;
    layout.beginLayout();
    int count = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        if (count++ > 0) y += extraLineSpacing;
        line.setLineWidth(std::max(1.0, width));
        line.setPosition(QPointF(0, y));
        y += std::max(line.height(), lineHeight);
    }
    layout.endLayout();
    if (count == 0) y = lineHeight;
    if (painter) {
        painter->setPen(color);
        layout.draw(painter, QPointF(left, top));
    }
    return y;
}

}  // namespace

double MarkdownRenderer::render(QPainter* painter, const QPaintDevice* device, QRectF area,
                                const std::vector<MarkdownElement>& elements, const MarkdownStyle& st,
                                Colors colors, TextAlignment alignment, InlineMarks inlineMarks) {
    const Qt::Alignment align = horizontal(alignment);
    const double width = area.width();
    double y = area.top();
    bool first = true;
    if (painter) painter->save();
    for (const MarkdownElement& e : elements) {
        if (!first) y += st.spacing;
        first = false;
        switch (e.type) {
        case Type::h1:
        case Type::h2:
        case Type::h3: {
            const double base = e.type == Type::h1 ? st.h1 : e.type == Type::h2 ? st.h2 : st.h3;
            const double pad = e.type == Type::h1 ? st.h1Pad : e.type == Type::h2 ? st.h2Pad : st.h3Pad;
            const QFont font = PixelFont::system(st.font(base), e.type == Type::h3 ? QFont::DemiBold : QFont::Bold,
                                                 device);
            const QColor& color = e.type == Type::h1 ? colors.accent : colors.text;
            y += textBlock(painter, device, area.left(), y, width, inlineMarks(e.content), font, color, align, 0);
            y += st.font(pad);
            break;
        }
        case Type::paragraph: {
            const QFont font = PixelFont::system(st.font(st.paragraph), QFont::Normal, device);
            y += textBlock(painter, device, area.left(), y, width, inlineMarks(e.content), font, colors.text, align,
                           st.paragraphLineSpacing);
            break;
        }
        case Type::bullet:
        case Type::numbered: {
            // The marker keeps its place before the text in every alignment;
            // numbered items lost their number in the reader and show it too.
            const QFont markerFont = PixelFont::system(st.font(st.bulletMarker),
                                                       st.bulletMarkerBold ? QFont::Bold : QFont::Normal, device);
            const QString marker = QStringLiteral("\u2022");
            const double markerWidth = PixelFont::metrics(markerFont, device).horizontalAdvance(marker);
            const double gap = st.font(st.bulletSpacing);
            const QFont font = PixelFont::system(st.font(st.bulletText), QFont::Normal, device);
            const double textLeft = area.left() + markerWidth + gap;
            const double textWidth = std::max(1.0, width - markerWidth - gap);
            const QString text = inlineMarks(e.content);
            double textWidthUsed = textWidth;
            double offset = 0;
            if (align != Qt::AlignLeft) {
                // The row sits in the column as a whole, marker and text together.
                const double natural = PixelFont::metrics(font, device).horizontalAdvance(text);
                textWidthUsed = std::min(textWidth, natural + 1);
                const double rowWidth = markerWidth + gap + textWidthUsed;
                offset = align == Qt::AlignHCenter ? (width - rowWidth) / 2 : width - rowWidth;
            }
            const double markerHeight = textBlock(painter, device, area.left() + offset, y, markerWidth + 1, marker,
                                                  markerFont, colors.accent, Qt::AlignLeft, 0);
            const double textHeight = textBlock(painter, device, textLeft + offset, y, textWidthUsed, text, font,
                                                colors.text, align == Qt::AlignLeft ? align : Qt::AlignLeft,
                                                st.paragraphLineSpacing);
            y += std::max(markerHeight, textHeight);
            break;
        }
        case Type::codeBlock: {
            const QFont font = PixelFont::system(st.font(st.code), QFont::Normal, device);
            const double pad = st.font(st.codePadding);
            QString text = e.content;
            if (text.endsWith(QLatin1Char('\n'))) text.chop(1);
            const double textHeight = textBlock(nullptr, device, 0, 0, width - 2 * pad, text, font, Qt::white,
                                                Qt::AlignLeft, 0);
            const QRectF box(area.left(), y, width, textHeight + 2 * pad);
            if (painter) {
                painter->setRenderHint(QPainter::Antialiasing);
                painter->setPen(Qt::NoPen);
                painter->setBrush(QColor(0, 0, 0, 128));
                painter->drawRoundedRect(box, st.font(st.codeRadius), st.font(st.codeRadius));
                textBlock(painter, device, box.left() + pad, box.top() + pad, width - 2 * pad, text, font, Qt::white,
                          Qt::AlignLeft, 0);
            }
            y += box.height();
            break;
        }
        case Type::divider: {
            const double pad = st.font(st.dividerPadding);
            if (painter) {
                QColor line = colors.text;
                line.setAlphaF(line.alphaF() * 0.3f);
                painter->fillRect(QRectF(area.left(), y + pad, width, 1), line);
            }
            y += 2 * pad + 1;
            break;
        }
        }
    }
    if (painter) painter->restore();
    return y - area.top();
}

}  // namespace orvane
