#pragma once

#include <QImage>

namespace orvane {

// Brightness and contrast of a picture: brightness is added to each colour
// channel (0 leaves it), then contrast scales about the middle grey (1 leaves
// it). Channels run from 0 to 1; the result is clamped.
class ImageAdjust {
public:
    static bool isNeutral(double brightness, double contrast) { return brightness == 0 && contrast == 1; }

    // The adjusted copy; the input itself when the adjustment is neutral.
    static QImage adjusted(const QImage& image, double brightness, double contrast);

    // One channel value under the adjustment, for an opaque pixel.
    static int adjustChannel(int value, double brightness, double contrast);
};

}  // namespace orvane
