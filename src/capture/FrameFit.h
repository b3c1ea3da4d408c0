#pragma once

#include <QImage>
#include <QSize>

namespace orvane {

// Brings a grabbed picture to a stream's size: unchanged when it already
// fits exactly, scaled when the aspect matches, otherwise scaled to fit and
// centred on black.
class FrameFit {
public:
    static QImage fit(const QImage& image, const QSize& outputSize);
};

}  // namespace orvane
