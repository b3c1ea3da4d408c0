#pragma once

#include <QRectF>
#include <QSizeF>

#include "document/BrandingConfig.h"

namespace orvane {

// The branding plate's sizes on a canvas: configured lengths are meant for
// a canvas whose shorter side is 720.
struct BrandingMetrics {
    double shorterSide = 0;  // m
    double unit = 0;         // u = m / 720
    QSizeF logoSize;
    double textSize = 0;
    double gap = 0;
    double padding = 0;
    double cornerRadius = 0;
    double margin = 0;
};

// Where the parts of the plate go. Empty rectangles for absent parts.
struct BrandingLayout {
    QRectF box;  // the background, padding included
    QRectF logo;
    QRectF text;
};

class BrandingGeometry {
public:
    static BrandingMetrics metrics(const BrandingConfig& branding, QSizeF canvas);

    // Lays out a plate with the given parts; textSize is the measured size of
    // the text at metrics.textSize, or empty when there is no text.
    static BrandingLayout layout(const BrandingMetrics& metrics, BrandingPosition position, QSizeF canvas,
                                 bool hasLogo, QSizeF textSize);
};

}  // namespace orvane
