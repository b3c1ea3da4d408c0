#pragma once

#include <QImage>
#include <QMarginsF>
#include <QRectF>
#include <QSizeF>

namespace orvane {

// A Gaussian blur cheap enough for every frame. The picture is reduced to a
// size at which the blur is a few pixels wide, blurred there with three box
// passes (which approximate a Gaussian closely), and drawn back at full size
// with smooth scaling. Outside the picture counts as transparent, so the
// edges soften into whatever lies behind.
class FastBlur {
public:
    // A reduced blurred picture and the margin by which it reaches beyond the
    // drawn rectangle (the blur's spread into the transparent surround).
    struct Blurred {
        QImage image;
        QMarginsF bleed;

        bool isNull() const { return image.isNull(); }
        // Where to draw it, with smooth scaling, for a picture drawn at `rect`.
        QRectF target(QRectF rect) const { return rect.marginsAdded(bleed); }
    };

    // The blurred picture for drawing at `drawnSize` canvas points with a
    // Gaussian of standard deviation `sigma` in those points. Null when sigma
    // is too small to show.
    static Blurred blur(const QImage& source, QSizeF drawnSize, double sigma);

    // Blurs a premultiplied image in place, at its own scale.
    static void blurInPlace(QImage& image, double sigma);
};

}  // namespace orvane
