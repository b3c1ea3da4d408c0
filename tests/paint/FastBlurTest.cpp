#include <gtest/gtest.h>

#include <QPainter>
#include <cmath>

#include "paint/FastBlur.h"

namespace orvane {
namespace fast_blur_test {

// The blurred picture drawn back at full size, as the renderer does.
QImage blurToSize(const QImage& source, QSize size, double sigma) {
    const FastBlur::Blurred blurred = FastBlur::blur(source, QSizeF(size), sigma);
    QImage out(size, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter p(&out);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(blurred.target(QRectF(QPointF(0, 0), QSizeF(size))), blurred.image);
    return out;
}

TEST(FastBlur, StepEdgeFollowsTheGaussian) {
    // A vertical edge in the middle of a wide picture: across it the blurred
    // value is the Gaussian's cumulative distribution.
    QImage edge(800, 200, QImage::Format_ARGB32_Premultiplied);
    edge.fill(Qt::black);
    QPainter(&edge).fillRect(400, 0, 400, 200, Qt::white);
    const double sigma = 20;
    const QImage out = blurToSize(edge, edge.size(), sigma);
    double worst = 0;
    for (int x = 340; x <= 460; x += 5) {
        const double d = (x + 0.5 - 400) / sigma;
        const double expected = 0.5 * std::erfc(-d / std::sqrt(2.0));
        const double actual = out.pixelColor(x, 100).redF();
        worst = std::max(worst, std::abs(actual - expected));
    }
    EXPECT_LT(worst, 0.03);
}

TEST(FastBlur, EdgesFadeToTransparent) {
    QImage solid(400, 200, QImage::Format_ARGB32_Premultiplied);
    solid.fill(Qt::white);
    const QImage out = blurToSize(solid, solid.size(), 20);
    EXPECT_NEAR(out.pixelColor(200, 100).alphaF(), 1.0, 0.02);
    // Near the edge about half the kernel lies outside: the Gaussian's
    // distribution at the pixel centres.
    EXPECT_NEAR(out.pixelColor(0, 100).alphaF(), 0.51, 0.06);
    EXPECT_NEAR(out.pixelColor(5, 100).alphaF(), 0.61, 0.03);
    EXPECT_NEAR(out.pixelColor(20, 100).alphaF(), 0.85, 0.03);
}

TEST(FastBlur, TooSmallOrEmptyGivesNothing) {
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    EXPECT_TRUE(FastBlur::blur(image, QSizeF(10, 10), 0.1).isNull());
    EXPECT_TRUE(FastBlur::blur(QImage(), QSizeF(10, 10), 20).isNull());
    EXPECT_TRUE(FastBlur::blur(image, QSizeF(0, 10), 20).isNull());
}

TEST(FastBlur, ReducesLargePictures) {
    QImage big(1920, 1080, QImage::Format_RGB32);
    big.fill(Qt::gray);
    const QImage small = FastBlur::blur(big, QSizeF(1536, 864), 20).image;
    EXPECT_LE(small.width(), 1536 / 4);
    EXPECT_NEAR(small.pixelColor(small.width() / 2, small.height() / 2).red(), QColor(Qt::gray).red(), 2);
}

}  // namespace
}  // namespace orvane
