#pragma once

#include <QImage>

namespace orvane {

// What one grab gives: the picture and whether the pointer was inside the
// target's cursor region when it was taken.
struct GrabbedFrame {
    QImage image;
    bool pointerInside = false;
};

}  // namespace orvane
