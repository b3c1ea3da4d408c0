#pragma once

#include <QRectF>
#include <QSizeF>

#include "document/ProgressBarConfig.h"

namespace orvane {

// The progress strip's sizes on a canvas (the overlay's size is the canvas).
struct ProgressStripMetrics {
    bool horizontal = true;
    double shorterSide = 0;    // m
    QRectF strip;              // background, spanning the full canvas length
    double thickness = 0;
    double paddingAlong = 0;   // before the first item along the strip
    double markerDiameter = 0; // d
    double checkSize = 0;      // the check mark on a done marker
    double numberSize = 0;     // the number on a pending marker
    double labelSize = 0;      // font size of the labels
    double gap = 0;            // between marker and label
    double itemPadding = 0;    // on both sides of an item, along the strip
    QSizeF connector;          // width by height
    double labelMaxWidth = 0;  // vertical bars only; the label may wrap to two lines
};

// One item of the strip, placed: its marker, its label, and the connector
// that follows it (empty for the last item).
struct ProgressItemPlacement {
    QRectF marker;
    QRectF label;
    QRectF connector;
    double next = 0;  // where the next item starts along the strip
};

class ProgressBarGeometry {
public:
    static ProgressStripMetrics metrics(const ProgressBarConfig& config, QSizeF canvas);

    // Places one item starting at `start` along the strip (x for horizontal,
    // y for vertical bars). labelSize is the label's measured size.
    static ProgressItemPlacement placeItem(const ProgressStripMetrics& metrics, double start, QSizeF labelSize,
                                           bool hasConnector);
};

}  // namespace orvane
