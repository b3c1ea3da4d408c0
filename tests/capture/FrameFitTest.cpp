#include <gtest/gtest.h>

#include "capture/FrameFit.h"

namespace orvane {
namespace frame_fit_test {

QImage solid(int w, int h, QColor colour) {
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

TEST(FrameFit, ExactSizeIsPassedThroughWithoutACopy) {
    const QImage image = solid(320, 180, Qt::red);
    const QImage fitted = FrameFit::fit(image, QSize(320, 180));
    EXPECT_EQ(fitted.constBits(), image.constBits());
}

TEST(FrameFit, SameAspectIsScaled) {
    const QImage fitted = FrameFit::fit(solid(1920, 1080, Qt::blue), QSize(960, 540));
    EXPECT_EQ(fitted.size(), QSize(960, 540));
    EXPECT_EQ(fitted.pixelColor(480, 270), QColor(Qt::blue));
    EXPECT_EQ(fitted.pixelColor(0, 0), QColor(Qt::blue));
}

TEST(FrameFit, OtherAspectIsCentredOnBlack) {
    // 960x1080 into 1280x720: 640x720 in the middle, 320 black each side.
    const QImage fitted = FrameFit::fit(solid(960, 1080, Qt::green), QSize(1280, 720));
    EXPECT_EQ(fitted.size(), QSize(1280, 720));
    EXPECT_EQ(fitted.pixelColor(640, 360), QColor(Qt::green));
    EXPECT_EQ(fitted.pixelColor(10, 360), QColor(Qt::black));
    EXPECT_EQ(fitted.pixelColor(1270, 360), QColor(Qt::black));
    EXPECT_EQ(fitted.pixelColor(330, 10), QColor(Qt::green));
}

}  // namespace
}  // namespace orvane
