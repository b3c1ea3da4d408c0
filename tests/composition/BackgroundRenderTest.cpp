#include <gtest/gtest.h>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "composition/SceneRenderer.h"

namespace orvane {
namespace background_render_test {

using test::near;

const QColor kRed(255, 0, 0);
const QColor kBlue(0, 0, 255);
const QColor kMid(128, 0, 128);

QImage renderBackground(GradientDirection direction, std::vector<CodableColor> colors) {
    StreamingScene scene;
    scene.backgroundType = BackgroundType::gradient;
    scene.gradientColors = std::move(colors);
    scene.gradientDirection = direction;
    scene.backgroundColor = {0, 1, 0, 1};
    scene.brandingEnabled = false;
    scene.progressBarEnabled = false;
    scene.sources = {test::makeSource(SourceType::camera)};  // no empty state
    scene.layout = SceneLayout::fullScreen;                  // and no camera drawn
    SceneRenderer renderer;
    SceneRenderInputs in;
    in.scene = &scene;
    return test::renderImage(QSize(160, 90), [&](QPainter& p) { renderer.render(p, QSizeF(160, 90), in, 0); });
}

struct CornerCase {
    GradientDirection direction;
    QColor topLeft, topRight, bottomLeft, bottomRight;
};

class GradientCorners : public ::testing::TestWithParam<CornerCase> {};

TEST_P(GradientCorners, CornerColoursFollowTheDirection) {
    const CornerCase& c = GetParam();
    const QImage image = renderBackground(c.direction, {{1, 0, 0, 1}, {0, 0, 1, 1}});
    test::keep(image, std::string("gradient-") + std::string(toString(c.direction)).substr(0, 6));
    const std::pair<QPoint, QColor> probes[] = {
        {{0, 0}, c.topLeft}, {{159, 0}, c.topRight}, {{0, 89}, c.bottomLeft}, {{159, 89}, c.bottomRight}};
    for (const auto& [at, expected] : probes) {
        const QColor actual = image.pixelColor(at);
        EXPECT_TRUE(near(actual, expected, 10))
            << toString(c.direction) << " at " << at.x() << "," << at.y() << ": " << test::describe(actual)
            << " expected " << test::describe(expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    AllDirections, GradientCorners,
    ::testing::Values(CornerCase{GradientDirection::topToBottom, kRed, kRed, kBlue, kBlue},
                      CornerCase{GradientDirection::bottomToTop, kBlue, kBlue, kRed, kRed},
                      CornerCase{GradientDirection::leftToRight, kRed, kBlue, kRed, kBlue},
                      CornerCase{GradientDirection::rightToLeft, kBlue, kRed, kBlue, kRed},
                      // Stretched with the canvas: the other two corners lie on the midline.
                      CornerCase{GradientDirection::topLeftToBottomRight, kRed, kMid, kMid, kBlue},
                      CornerCase{GradientDirection::topRightToBottomLeft, kMid, kRed, kBlue, kMid}));

TEST(RadialBackground, CentreToSeventyPercentOfTheLongerSide) {
    const QImage image = renderBackground(GradientDirection::radial, {{1, 0, 0, 1}, {0, 0, 1, 1}});
    EXPECT_TRUE(near(image.pixelColor(80, 45), kRed, 6)) << test::describe(image.pixelColor(80, 45));
    // The corner lies at 91.8 of a radius of 112: 82 % of the way to blue.
    const double t = std::hypot(79.5, 44.5) / 112.0;
    const QColor expected(static_cast<int>(255 * (1 - t)), 0, static_cast<int>(255 * t));
    EXPECT_TRUE(near(image.pixelColor(0, 0), expected, 8)) << test::describe(image.pixelColor(0, 0));
}

TEST(Background, ThreeColoursSpreadEvenly) {
    const QImage image = renderBackground(GradientDirection::leftToRight, {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}});
    EXPECT_TRUE(near(image.pixelColor(80, 45), QColor(0, 255, 0), 12)) << test::describe(image.pixelColor(80, 45));
}

TEST(Background, GradientWithoutColoursFallsBackToTheSolidColour) {
    const QImage image = renderBackground(GradientDirection::radial, {});
    EXPECT_TRUE(near(image.pixelColor(10, 10), QColor(0, 255, 0), 1));
    EXPECT_TRUE(near(image.pixelColor(150, 80), QColor(0, 255, 0), 1));
}

TEST(Background, SolidUsesItsAlpha) {
    StreamingScene scene = test::solidScene(QColor(255, 255, 255, 128));
    scene.sources = {test::makeSource(SourceType::camera)};
    SceneRenderer renderer;
    SceneRenderInputs in;
    in.scene = &scene;
    const QImage image =
        test::renderImage(QSize(32, 18), [&](QPainter& p) { renderer.render(p, QSizeF(32, 18), in, 0); });
    EXPECT_TRUE(near(image.pixelColor(5, 5), QColor(128, 128, 128), 2)) << test::describe(image.pixelColor(5, 5));
}

}  // namespace
}  // namespace orvane
