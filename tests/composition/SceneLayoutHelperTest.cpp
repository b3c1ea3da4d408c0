#include <gtest/gtest.h>

#include "composition/SceneLayoutHelper.h"
#include "document/StreamingScene.h"

namespace orvane {
namespace scene_layout_helper_test {

const QSizeF kCanvas(1600, 900);

struct FrameCase {
    SceneLayout layout;
    std::optional<QRectF> camera;
    std::optional<QRectF> content;
};

class CalculateFrames : public ::testing::TestWithParam<FrameCase> {};

TEST_P(CalculateFrames, GivesTheTableFrames) {
    const FrameCase& c = GetParam();
    const LayoutFrame f = SceneLayoutHelper::calculateFrames(c.layout, kCanvas);
    EXPECT_EQ(f.cameraFrame, c.camera) << toString(c.layout);
    EXPECT_EQ(f.contentFrame, c.content) << toString(c.layout);
}

const QRectF kFull(0, 0, 1600, 900);

INSTANTIATE_TEST_SUITE_P(
    AllLayouts, CalculateFrames,
    ::testing::Values(
        FrameCase{SceneLayout::fullCamera, kFull, std::nullopt},
        FrameCase{SceneLayout::fullScreen, std::nullopt, kFull},
        // 50/50 in name only: the camera reaches under the content.
        FrameCase{SceneLayout::splitHorizontal, QRectF(0, 0, 1040, 900), QRectF(800, 0, 800, 900)},
        FrameCase{SceneLayout::pipBottomRight, QRectF(1180, 655, 400, 225), kFull},
        FrameCase{SceneLayout::pipBottomLeft, QRectF(20, 655, 400, 225), kFull},
        FrameCase{SceneLayout::pipTopRight, QRectF(1180, 20, 400, 225), kFull},
        FrameCase{SceneLayout::pipTopLeft, QRectF(20, 20, 400, 225), kFull},
        FrameCase{SceneLayout::cameraLeft, QRectF(0, 0, 640, 900), QRectF(640, 0, 960, 900)},
        FrameCase{SceneLayout::cameraRight, QRectF(960, 0, 640, 900), QRectF(0, 0, 960, 900)}));

Source source(SourceType type) {
    Source s;
    s.type = type;
    return s;
}

TEST(EffectiveLayout, FullCameraWithOnlyAScreenDrawsFullScreen) {
    StreamingScene scene;
    scene.layout = SceneLayout::fullCamera;
    scene.sources = {source(SourceType::screen)};
    EXPECT_EQ(SceneLayoutHelper::effectiveLayout(scene), SceneLayout::fullScreen);
    scene.sources = {source(SourceType::content)};
    EXPECT_EQ(SceneLayoutHelper::effectiveLayout(scene), SceneLayout::fullScreen);
}

TEST(EffectiveLayout, FullCameraWithCameraAndScreenStays) {
    StreamingScene scene;
    scene.layout = SceneLayout::fullCamera;
    scene.sources = {source(SourceType::screen), source(SourceType::camera)};
    EXPECT_EQ(SceneLayoutHelper::effectiveLayout(scene), SceneLayout::fullCamera);
}

TEST(EffectiveLayout, FullCameraWithoutSourcesStays) {
    StreamingScene scene;
    scene.layout = SceneLayout::fullCamera;
    EXPECT_EQ(SceneLayoutHelper::effectiveLayout(scene), SceneLayout::fullCamera);
}

TEST(EffectiveLayout, NothingElseIsCorrected) {
    StreamingScene scene;
    scene.sources = {source(SourceType::camera)};
    scene.layout = SceneLayout::fullScreen;
    EXPECT_EQ(SceneLayoutHelper::effectiveLayout(scene), SceneLayout::fullScreen);
    scene.sources = {source(SourceType::screen)};
    scene.layout = SceneLayout::pipTopLeft;
    EXPECT_EQ(SceneLayoutHelper::effectiveLayout(scene), SceneLayout::pipTopLeft);
}

TEST(CameraTransform, VerticalRectangleInFullCamera) {
    SourceConfiguration c;
    c.cameraShape = CameraShape::verticalRectangle;
    const CameraBox box = SceneLayoutHelper::calculateCameraTransform(c, SceneLayout::fullCamera, kFull);
    EXPECT_DOUBLE_EQ(box.size.width(), 405);
    EXPECT_DOUBLE_EQ(box.size.height(), 720);
    EXPECT_EQ(box.centre, QPointF(800, 450));
}

TEST(CameraTransform, CircleIsASquareOfTheShorterSide) {
    SourceConfiguration c;
    c.cameraShape = CameraShape::circle;
    const QRectF frame(0, 0, 640, 900);
    const CameraBox box = SceneLayoutHelper::calculateCameraTransform(c, SceneLayout::cameraLeft, frame);
    EXPECT_EQ(box.size, QSizeF(640, 640));
    EXPECT_EQ(box.centre, QPointF(320, 450));
}

TEST(CameraTransform, VerticalRectangleWidthIsCappedByTheFrame) {
    SourceConfiguration c;
    c.cameraShape = CameraShape::verticalRectangle;
    const CameraBox box = SceneLayoutHelper::calculateCameraTransform(c, SceneLayout::splitHorizontal,
                                                                      QRectF(0, 0, 300, 900));
    EXPECT_DOUBLE_EQ(box.size.width(), 300);  // min(300, 720 * 0.5625 = 405)
    EXPECT_DOUBLE_EQ(box.size.height(), 720);
}

TEST(CameraTransform, SlidersHaveNoEffectInSideLayouts) {
    SourceConfiguration c;
    c.cameraWidth = 0.5;
    c.cameraHorizontalPosition = 1;
    const CameraBox box = SceneLayoutHelper::calculateCameraTransform(c, SceneLayout::cameraRight,
                                                                      QRectF(960, 0, 640, 900));
    EXPECT_EQ(box.size, QSizeF(640, 900));
    EXPECT_EQ(box.centre, QPointF(1280, 450));
}

TEST(CameraTransform, OtherLayoutsScaleAndClampTheOffsets) {
    SourceConfiguration c;
    c.cameraWidth = 0.5;
    c.cameraHeight = 0.5;
    c.cameraHorizontalPosition = 1;   // 1600 * 0.5 = 800 wanted, room (1600 - 800) / 2 = 400
    c.cameraVerticalPosition = -0.2;  // 900 * -0.1 = -90, room 225
    const CameraBox box = SceneLayoutHelper::calculateCameraTransform(c, SceneLayout::fullScreen, kFull);
    EXPECT_EQ(box.size, QSizeF(800, 450));
    EXPECT_DOUBLE_EQ(box.centre.x(), 1200);
    EXPECT_DOUBLE_EQ(box.centre.y(), 360);
}

TEST(CameraTransformPIP, MediumRectangleInTopLeft) {
    SourceConfiguration c;
    const LayoutFrame f = SceneLayoutHelper::calculateFrames(SceneLayout::pipTopLeft, kCanvas);
    const CameraBox box = SceneLayoutHelper::calculateCameraTransformPIP(c, *f.cameraFrame, kCanvas);
    EXPECT_DOUBLE_EQ(box.size.width(), 352);
    EXPECT_DOUBLE_EQ(box.size.height(), 264);
    EXPECT_DOUBLE_EQ(box.centre.x(), 220);
    EXPECT_DOUBLE_EQ(box.centre.y(), 132.5);
}

TEST(CameraTransformPIP, CircleIsNotMadeSquare) {
    SourceConfiguration c;
    c.cameraShape = CameraShape::circle;
    c.cameraSize = CameraOverlaySize::small;
    const CameraBox box = SceneLayoutHelper::calculateCameraTransformPIP(c, QRectF(20, 20, 400, 225), kCanvas);
    EXPECT_DOUBLE_EQ(box.size.width(), 240);
    EXPECT_DOUBLE_EQ(box.size.height(), 180);
}

TEST(CameraTransformPIP, VerticalUsesTheHeightTable) {
    SourceConfiguration c;
    c.cameraShape = CameraShape::verticalRectangle;
    c.cameraSize = CameraOverlaySize::large;
    const CameraBox box = SceneLayoutHelper::calculateCameraTransformPIP(c, QRectF(1180, 655, 400, 225), kCanvas);
    EXPECT_DOUBLE_EQ(box.size.height(), 405);
    EXPECT_DOUBLE_EQ(box.size.width(), 405 * 0.5625);
    EXPECT_EQ(box.centre, QPointF(1380, 767.5));
}

TEST(CameraTransformPIP, SlidersMoveWithinTheFrameReachClampedToTheCanvas) {
    SourceConfiguration c;
    c.cameraHorizontalPosition = 1;  // frame width 400 * 0.5 = 200 < room 624
    c.cameraVerticalPosition = -1;   // -112.5, room (900 - 264) / 2 = 318
    const CameraBox box = SceneLayoutHelper::calculateCameraTransformPIP(c, QRectF(20, 20, 400, 225), kCanvas);
    EXPECT_DOUBLE_EQ(box.centre.x(), 420);
    EXPECT_DOUBLE_EQ(box.centre.y(), 20);
}

TEST(CameraTransformPIP, ABoxLargerThanTheCanvasDoesNotFail) {
    SourceConfiguration c;
    c.cameraSize = CameraOverlaySize::large;
    c.cameraWidth = 4;  // 1600 * 0.32 * 4 = 2048 > 1600: no room at all
    c.cameraHorizontalPosition = 1;
    const CameraBox box = SceneLayoutHelper::calculateCameraTransformPIP(c, QRectF(20, 20, 400, 225), kCanvas);
    EXPECT_DOUBLE_EQ(box.size.width(), 2048);
    EXPECT_DOUBLE_EQ(box.centre.x(), 220);  // centred on the anchor
}

TEST(PipSizeTable, FactorsBySizeAndShape) {
    EXPECT_DOUBLE_EQ(SceneLayoutHelper::pipSizeFactor(CameraOverlaySize::small, CameraShape::rectangle), 0.15);
    EXPECT_DOUBLE_EQ(SceneLayoutHelper::pipSizeFactor(CameraOverlaySize::medium, CameraShape::circle), 0.22);
    EXPECT_DOUBLE_EQ(SceneLayoutHelper::pipSizeFactor(CameraOverlaySize::large, CameraShape::rectangle), 0.32);
    EXPECT_DOUBLE_EQ(SceneLayoutHelper::pipSizeFactor(CameraOverlaySize::small, CameraShape::verticalRectangle), 0.25);
    EXPECT_DOUBLE_EQ(SceneLayoutHelper::pipSizeFactor(CameraOverlaySize::medium, CameraShape::verticalRectangle),
                     0.35);
    EXPECT_DOUBLE_EQ(SceneLayoutHelper::pipSizeFactor(CameraOverlaySize::large, CameraShape::verticalRectangle), 0.45);
}

TEST(CameraShapeForLayout, SideLayoutsAndFullCameraAlwaysClipARectangle) {
    for (SceneLayout layout : {SceneLayout::splitHorizontal, SceneLayout::cameraLeft, SceneLayout::cameraRight,
                               SceneLayout::fullCamera})
        EXPECT_EQ(SceneLayoutHelper::cameraShapeForLayout(CameraShape::circle, layout), CameraShape::rectangle);
    for (SceneLayout layout : {SceneLayout::pipTopLeft, SceneLayout::pipBottomRight, SceneLayout::fullScreen})
        EXPECT_EQ(SceneLayoutHelper::cameraShapeForLayout(CameraShape::circle, layout), CameraShape::circle);
}

}  // namespace
}  // namespace orvane
