#pragma once

#include <QImage>
#include <QSizeF>

namespace orvane {

// A Gaussian blur cheap enough for every frame. The picture is reduced to a
// size at which the blur is a few pixels wide, blurred there with three box
// passes (which approximate a Gaussian closely), and drawn back at full size
// with smooth scaling. Outside the picture counts as transparent, so the
// edges soften into whatever lies behind.
class FastBlur {
public:
    // The blurred picture for drawing at `drawnSize` canvas points with a
    // Gaussian of standard deviation `sigma` in those points. The result is
    // smaller than drawnSize; draw it scaled into the target rectangle with
    // smooth pixmap transformation. A null image when sigma is too small to
    // show.
    static QImage blur(const QImage& source, QSizeF drawnSize, double sigma);

    // Blurs a premultiplied image in place, at its own scale.
    static void blurInPlace(QImage& image, double sigma);
};

}  // namespace orvane
