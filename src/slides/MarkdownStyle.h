#pragma once

#include <QColor>
#include <QSizeF>

namespace orvane {

// The sizes and looks of one of the two Markdown renderers. Stage and
// preview have their own reference sizes and numbers; a style is resolved
// for a measured size and a slide's text scale.
struct MarkdownStyle {
    double r = 1;  // base factor
    double f = 1;  // font factor, r with a floor
    double s = 1;  // the slide's text scale

    double spacing = 16;
    double h1 = 48, h2 = 36, h3 = 28;           // font sizes before f and s
    double h1Pad = 8, h2Pad = 6, h3Pad = 4;     // bottom paddings before f and s
    double paragraph = 20;
    double paragraphLineSpacing = 0;            // extra between lines, resolved
    double bulletMarker = 24;
    bool bulletMarkerBold = true;
    double bulletSpacing = 12;
    double bulletText = 20;
    double code = 16, codePadding = 16, codeRadius = 8;
    double dividerPadding = 8;

    // Stage: 1920 by 1080 reference, fonts never below 0.8 of it.
    static MarkdownStyle stage(QSizeF size, double textScale);
    // Editor preview: 400 by 300 reference, fonts never below 0.6 of it.
    static MarkdownStyle preview(QSizeF size, double textScale);

    double font(double base) const { return base * f * s; }
};

}  // namespace orvane
