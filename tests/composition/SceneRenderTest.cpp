#include <gtest/gtest.h>

#include <QPainter>
#include <cmath>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "paint/PixelFont.h"
#include "composition/SceneLayoutHelper.h"
#include "composition/SceneRenderer.h"
#include "composition/SourceFrameGeometry.h"
#include "composition/StatusPainter.h"
#include "composition/TestFrameSource.h"
#include "slides/SlidesRenderer.h"

namespace orvane {
namespace scene_render_test {

using test::near;

const QSize kSize(1600, 900);
const QColor kBackground(20, 40, 60);

struct Fixture {
    StreamingScene scene = test::solidScene(kBackground);
    TestFrameSource frames;
    SceneRenderer renderer;
    SceneRenderInputs in;

    Fixture() {
        scene.brandingEnabled = false;
        scene.progressBarEnabled = false;
        in.scene = &scene;
        in.frames = &frames;
    }
    Source& add(SourceType type, QColor frame = QColor()) {
        scene.sources.push_back(test::makeSource(type));
        if (frame.isValid()) frames.setFrame(scene.sources.back().id, test::solidFrame(frame));
        return scene.sources.back();
    }
    QImage render(double now = 0, QSize size = kSize) {
        return test::renderImage(size, [&](QPainter& p) { renderer.render(p, QSizeF(size), in, now); });
    }
};

#define EXPECT_PIXEL(image, x, y, colour, tolerance)                                                          \
    EXPECT_TRUE(near((image).pixelColor((x), (y)), (colour), (tolerance)))                                   \
        << "at " << (x) << "," << (y) << ": " << test::describe((image).pixelColor((x), (y))) << " expected " \
        << test::describe(colour)

TEST(CameraLayer, VerticalBoxInFullCameraWhereTheGeometryPutsIt) {
    Fixture f;
    f.scene.layout = SceneLayout::fullCamera;
    Source& cam = f.add(SourceType::camera, QColor(0, 200, 0));
    cam.configuration.cameraShape = CameraShape::verticalRectangle;
    cam.configuration.cameraBorderEnabled = false;
    const QImage image = f.render();
    test::keep(image, "camera-vertical-fullcamera");
    // 405 by 720 around (800, 450): x 597.5 to 1002.5, y 90 to 810.
    EXPECT_PIXEL(image, 800, 450, QColor(0, 200, 0), 2);
    EXPECT_PIXEL(image, 600, 450, QColor(0, 200, 0), 2);
    EXPECT_PIXEL(image, 1000, 100, QColor(0, 200, 0), 2);
    EXPECT_PIXEL(image, 594, 450, kBackground, 2);
    EXPECT_PIXEL(image, 1006, 450, kBackground, 2);
    EXPECT_PIXEL(image, 800, 86, kBackground, 2);
    EXPECT_PIXEL(image, 800, 814, kBackground, 2);
}

TEST(CameraLayer, MissingCameraFrameIsABlackBox) {
    Fixture f;
    f.scene.layout = SceneLayout::pipTopLeft;
    Source& cam = f.add(SourceType::camera);
    cam.configuration.cameraBorderEnabled = false;
    const QImage image = f.render();
    EXPECT_PIXEL(image, 220, 132, QColor(0, 0, 0), 1);
    EXPECT_PIXEL(image, 220, 300, kBackground, 1);  // below the 264-high box
}

TEST(CameraLayer, BorderIsStrokedOnTheBoxEdge) {
    Fixture f;
    f.scene.layout = SceneLayout::pipTopLeft;
    Source& cam = f.add(SourceType::camera, QColor(0, 0, 0));
    cam.configuration.cameraBorderColor = {1, 1, 0, 1};
    cam.configuration.cameraBorderWidth = 6;
    const QImage image = f.render();
    // The box's left edge is at 220 - 176 = 44.
    EXPECT_PIXEL(image, 44, 132, QColor(255, 255, 0), 3);
    EXPECT_PIXEL(image, 60, 132, QColor(0, 0, 0), 3);
}

TEST(CameraLayer, CircleShapeClipsInPip) {
    Fixture f;
    f.scene.layout = SceneLayout::pipBottomRight;
    Source& cam = f.add(SourceType::camera, QColor(0, 200, 0));
    cam.configuration.cameraShape = CameraShape::circle;
    cam.configuration.cameraBorderEnabled = false;
    const QImage image = f.render();
    const CameraBox box = SceneLayoutHelper::calculateCameraTransformPIP(
        cam.configuration, *SceneLayoutHelper::calculateFrames(SceneLayout::pipBottomRight, QSizeF(kSize)).cameraFrame,
        QSizeF(kSize));
    const QPointF c = box.centre;
    const double radius = std::min(box.size.width(), box.size.height()) / 2;
    EXPECT_PIXEL(image, int(c.x()), int(c.y()), QColor(0, 200, 0), 2);
    // The box's corner lies outside the circle.
    const QRectF r = box.rect();
    EXPECT_PIXEL(image, int(r.left() + 4), int(r.top() + 4), kBackground, 2);
    EXPECT_PIXEL(image, int(c.x() + radius - 4), int(c.y()), QColor(0, 200, 0), 3);
}

TEST(CameraLayer, MaskAlphaAtItsStopsInSplit) {
    Fixture f;
    f.scene = test::solidScene(Qt::black, SceneLayout::splitHorizontal);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    Source& cam = f.add(SourceType::camera, Qt::white);
    cam.configuration.cameraBorderEnabled = false;
    const QImage image = f.render();
    test::keep(image, "camera-mask-split");
    const int y = 450;
    for (int i = 0; i <= 4; ++i) {
        // Stops 0 to 4/7 lie under the camera, which ends at 0.65 of the width.
        const double expected[] = {1, 1, 1, 1, 0.8};
        const int x = std::min(1599, int(1600.0 * i / 7));
        const int v = int(std::lround(255 * expected[i]));
        EXPECT_PIXEL(image, x == 0 ? 2 : x, y, QColor(v, v, v), 4);
    }
    // Between 4/7 (0.8) and 5/7 (0.5), at 0.6 of the width: 0.74.
    EXPECT_PIXEL(image, 960, y, QColor(189, 189, 189), 4);
    EXPECT_PIXEL(image, 1100, y, QColor(0, 0, 0), 1);  // beyond the camera's 65 %
}

TEST(CameraLayer, CameraRightMaskFadesToTheLeft) {
    Fixture f;
    f.scene = test::solidScene(Qt::black, SceneLayout::cameraRight);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    Source& cam = f.add(SourceType::camera, Qt::white);
    cam.configuration.cameraBorderEnabled = false;
    const QImage image = f.render();
    EXPECT_PIXEL(image, 1590, 450, QColor(255, 255, 255), 3);
    EXPECT_PIXEL(image, 100, 450, QColor(0, 0, 0), 1);
}

TEST(CameraLayer, OnlyTheFirstCameraIsDrawn) {
    Fixture f;
    f.scene.layout = SceneLayout::fullCamera;
    Source& first = f.add(SourceType::camera, QColor(200, 0, 0));
    first.configuration.cameraBorderEnabled = false;
    Source& second = f.add(SourceType::camera, QColor(0, 0, 200));
    second.configuration.cameraBorderEnabled = false;
    EXPECT_PIXEL(f.render(), 800, 450, QColor(200, 0, 0), 2);
    f.scene.sources.erase(f.scene.sources.begin());
    EXPECT_PIXEL(f.render(), 800, 450, QColor(0, 0, 200), 2);
}

TEST(CameraLayer, BrightnessAndContrast) {
    Fixture f;
    f.scene.layout = SceneLayout::fullCamera;
    Source& cam = f.add(SourceType::camera, QColor(100, 100, 100));
    cam.configuration.cameraBorderEnabled = false;
    cam.configuration.cameraBrightness = 0.2;
    cam.configuration.cameraContrast = 2;
    // ((100 / 255 + 0.2) - 0.5) * 2 + 0.5 = 0.684
    EXPECT_PIXEL(f.render(), 800, 450, QColor(174, 174, 174), 2);
}

TEST(CameraLayer, PipCameraLiesAboveTheScreen) {
    Fixture f;
    f.scene.layout = SceneLayout::pipBottomRight;
    Source& screen = f.add(SourceType::screen, QColor(200, 0, 0));
    screen.configuration.scale = 1;
    screen.configuration.shadowEnabled = false;
    Source& cam = f.add(SourceType::camera, QColor(0, 200, 0));
    cam.configuration.cameraBorderEnabled = false;
    // Same order of sources, the other way round: the camera still wins.
    std::swap(f.scene.sources[0], f.scene.sources[1]);
    const QImage image = f.render();
    test::keep(image, "pip-above-screen");
    const QPointF c(1600 - 400 - 20 + 200, 900 - 225 - 20 + 112.5);
    EXPECT_PIXEL(image, int(c.x()), int(c.y()), QColor(0, 200, 0), 2);
    EXPECT_PIXEL(image, 400, 400, QColor(200, 0, 0), 2);
}

TEST(CameraLayer, SideCameraLiesUnderTheScreen) {
    Fixture f;
    f.scene.layout = SceneLayout::splitHorizontal;
    Source& cam = f.add(SourceType::camera, QColor(0, 200, 0));
    cam.configuration.cameraBorderEnabled = false;
    Source& screen = f.add(SourceType::screen, QColor(200, 0, 0));
    screen.configuration.scale = 1;
    screen.configuration.shadowEnabled = false;
    screen.configuration.borderRadius = 0;
    const QImage image = f.render();
    // 960 lies in both frames; the screen, fitted into 800 by 900, covers y 225 to 675 there.
    EXPECT_PIXEL(image, 960, 450, QColor(200, 0, 0), 2);
}

TEST(ScreenLayer, FittedScaledAndCentred) {
    Fixture f;
    f.scene = test::solidScene(Qt::white);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    Source& screen = f.add(SourceType::screen, QColor(0, 0, 160));
    screen.configuration.shadowEnabled = false;
    screen.configuration.borderRadius = 0;
    // 0.8 of a fit of 1600 by 900: 1280 by 720 from (160, 90).
    const QImage image = f.render();
    EXPECT_PIXEL(image, 162, 450, QColor(0, 0, 160), 2);
    EXPECT_PIXEL(image, 157, 450, QColor(255, 255, 255), 2);
    EXPECT_PIXEL(image, 800, 92, QColor(0, 0, 160), 2);
    EXPECT_PIXEL(image, 800, 87, QColor(255, 255, 255), 2);
}

TEST(ScreenLayer, OffsetsAndBrightness) {
    Fixture f;
    Source& screen = f.add(SourceType::screen, QColor(100, 100, 100));
    screen.configuration.shadowEnabled = false;
    screen.configuration.borderRadius = 0;
    screen.configuration.horizontalOffset = 192;  // 1600 / 1920 * 192 = 160
    screen.configuration.brightness = 1.5;
    const QImage image = f.render();
    EXPECT_PIXEL(image, 322, 450, QColor(227, 227, 227), 2);  // 100 / 255 + 0.5
    EXPECT_PIXEL(image, 317, 450, kBackground, 2);
}

TEST(ScreenLayer, ShadowBorderAndRoundedCorners) {
    Fixture f;
    f.scene = test::solidScene(Qt::white);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    Source& screen = f.add(SourceType::screen, QColor(0, 160, 0));
    screen.configuration.borderEnabled = true;
    screen.configuration.borderColor = {0, 0, 1, 1};
    screen.configuration.borderWidth = 6;
    screen.configuration.borderRadius = 40;
    screen.configuration.shadowColor = {0, 0, 0, 1};
    const QImage image = f.render();
    test::keep(image, "screen-effects");
    EXPECT_PIXEL(image, 160, 450, QColor(0, 0, 255), 3);       // the border on the edge
    EXPECT_PIXEL(image, 800, 450, QColor(0, 160, 0), 2);       // the frame
    EXPECT_LT(image.pixelColor(800, 820).lightness(), 200);   // shadow below, offset 8 down
    EXPECT_PIXEL(image, 800, 890, QColor(255, 255, 255), 6);   // and it fades
    EXPECT_PIXEL(image, 40, 40, QColor(255, 255, 255), 2);
    const QColor corner = image.pixelColor(164, 94);  // cut by the 40-point radius
    EXPECT_FALSE(near(corner, QColor(0, 160, 0), 30)) << test::describe(corner);
}

TEST(ScreenLayer, BlurOnlyWithProgramAndBlurMode) {
    // Thin white lines on black: sharp they stay white, blurred they spread out.
    QImage stripes(1920, 1080, QImage::Format_ARGB32_Premultiplied);
    stripes.fill(Qt::black);
    {
        QPainter p(&stripes);
        for (int x = 0; x < 1920; x += 60) p.fillRect(x, 0, 6, 1080, Qt::white);
    }
    const auto render = [&](bool isProgram, bool blurMode) {
        Fixture f;
        Source& screen = f.add(SourceType::screen);
        screen.configuration.scale = 1;
        screen.configuration.shadowEnabled = false;
        f.frames.setFrame(screen.id, stripes);
        f.in.isProgram = isProgram;
        f.in.isBlurModeActive = blurMode;
        return f.render(0, QSize(960, 540));  // frame at half size: lines 3 wide, every 30
    };
    for (auto [program, blur] : {std::pair{false, false}, {true, false}, {false, true}}) {
        const QImage sharp = render(program, blur);
        EXPECT_PIXEL(sharp, 481, 270, QColor(255, 255, 255), 8);
        EXPECT_PIXEL(sharp, 495, 270, QColor(0, 0, 0), 8);
    }
    const QImage blurred = render(true, true);
    test::keep(blurred, "blur-on");
    // Radius 20 over lines covering a tenth: everything near the mean.
    EXPECT_PIXEL(blurred, 481, 270, QColor(26, 26, 26), 10);
    EXPECT_PIXEL(blurred, 495, 270, QColor(26, 26, 26), 10);
}

TEST(ScreenLayer, BlurFadesInOverThreeTenths) {
    Fixture f;
    Source& screen = f.add(SourceType::screen);
    screen.configuration.scale = 1;
    screen.configuration.shadowEnabled = false;
    QImage half(1920, 1080, QImage::Format_ARGB32_Premultiplied);
    half.fill(Qt::black);
    QPainter(&half).fillRect(960, 0, 960, 1080, Qt::white);
    f.frames.setFrame(screen.id, half);
    f.in.isProgram = true;
    const QSize size(960, 540);
    f.render(0, size);
    f.in.isBlurModeActive = true;
    const int sharp = f.render(1.0, size).pixelColor(470, 270).red();
    const int partway = f.render(1.1, size).pixelColor(470, 270).red();
    const int full = f.render(1.5, size).pixelColor(470, 270).red();
    EXPECT_LT(sharp, 5);  // 10 points left of the edge, still black
    EXPECT_GT(partway, sharp);
    EXPECT_GT(full, partway);
    EXPECT_NEAR(full, 255 * 0.31, 20);  // a Gaussian of 20 at half a deviation from the edge
}

TEST(ScreenLayer, MissingFrameShowsTheCaptureState) {
    Fixture f;
    f.scene = test::solidScene(Qt::black);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    Source& screen = f.add(SourceType::screen);
    const auto countNear = [](const QImage& image, QColor colour) {
        int n = 0;
        for (int y = 300; y < 600; ++y)
            for (int x = 500; x < 1100; ++x)
                if (near(image.pixelColor(x, y), colour, 40)) ++n;
        return n;
    };
    f.frames.setState(screen.id, SourceFrame::failure("Capture error: No display found"));
    const QImage failed = f.render();
    test::keep(failed, "capture-failed");
    EXPECT_GT(countNear(failed, QColor(255, 149, 0)), 50);  // the orange warning symbol
    EXPECT_GT(countNear(failed, Qt::white), 50);            // the message
    f.frames.setState(screen.id, SourceFrame::startingUp());
    const QImage starting = f.render();
    EXPECT_EQ(countNear(starting, QColor(255, 149, 0)), 0);
    EXPECT_GT(countNear(starting, Qt::white), 50);
}

// Rows of the image holding the orange warning symbol, grouped into runs of
// consecutive rows: one run per symbol drawn.
std::vector<std::pair<int, int>> orangeRuns(const QImage& image) {
    std::vector<std::pair<int, int>> runs;
    for (int y = 0; y < image.height(); ++y) {
        bool orange = false;
        for (int x = 0; x < image.width() && !orange; ++x) orange = near(image.pixelColor(x, y), QColor(255, 149, 0), 40);
        if (!orange) continue;
        if (!runs.empty() && runs.back().second == y - 1)
            runs.back().second = y;
        else
            runs.emplace_back(y, y);
    }
    return runs;
}

TEST(ScreenLayer, TwoFailedSourcesShowTheirMessagesOneAboveTheOther) {
    Fixture f;
    f.scene = test::solidScene(Qt::black);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    const Uuid screen = f.add(SourceType::screen).id;
    const Uuid window = f.add(SourceType::window).id;
    f.frames.setState(screen, SourceFrame::failure("Capture error: No display found"));
    const auto alone = orangeRuns(f.render());
    ASSERT_EQ(alone.size(), 1u);  // the window is idle: no warning
    f.frames.setState(window, SourceFrame::failure("Capture error: Window not found"));
    const QImage both = f.render();
    test::keep(both, "two-capture-failures");
    const auto runs = orangeRuns(both);
    ASSERT_EQ(runs.size(), 2u) << "the two warnings share rows";
    // The screen's, first in the scene, above the window's, each in its own
    // half of the picture.
    EXPECT_LT(runs[0].second, kSize.height() / 2);
    EXPECT_GT(runs[1].first, kSize.height() / 2);
}

TEST(ScreenLayer, AFailedSourceUnderAPictureStaysUnderIt) {
    Fixture f;
    f.scene = test::solidScene(Qt::black);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    const Uuid screen = f.add(SourceType::screen).id;
    f.add(SourceType::window, QColor(0, 0, 160));
    f.frames.setState(screen, SourceFrame::failure("Capture error: No display found"));
    EXPECT_TRUE(orangeRuns(f.render()).empty());
}

TEST(StatusSlots, OneStateKeepsTheBoxAndSeveralShareItInBands) {
    const QRectF box(10, 20, 300, 90);
    EXPECT_EQ(StatusPainter::stackedSlot(box, 0, 1), box);
    EXPECT_EQ(StatusPainter::stackedSlot(box, 0, 3), QRectF(10, 20, 300, 30));
    EXPECT_EQ(StatusPainter::stackedSlot(box, 2, 3), QRectF(10, 80, 300, 30));
    EXPECT_EQ(StatusPainter::stackedSlot(box, 3, 3), box);  // out of range: the whole box
}

TEST(CinematicZoom, ScreenGroupGrowsAboutTheCentreAndContentDoesNot) {
    Fixture f;
    Source& screen = f.add(SourceType::screen, QColor(0, 0, 160));
    screen.configuration.shadowEnabled = false;
    screen.configuration.borderRadius = 0;
    f.scene.cinematicZoomEnabled = true;
    EXPECT_PIXEL(f.render(0), 120, 450, kBackground, 2);
    // At eight seconds the factor is 1.1: the left edge moves from 160 to 96.
    const QImage zoomed = f.render(8);
    EXPECT_PIXEL(zoomed, 100, 450, QColor(0, 0, 160), 2);
    EXPECT_PIXEL(zoomed, 92, 450, kBackground, 2);
    EXPECT_TRUE(f.renderer.isAnimating(8));
}

TEST(EmptyState, ShownOnlyWithoutSources) {
    Fixture f;
    f.scene = test::solidScene(Qt::black, SceneLayout::fullCamera);
    f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
    const auto whiteIn = [](const QImage& image) {
        int n = 0;
        for (int y = 350; y < 550; ++y)
            for (int x = 500; x < 1100; ++x)
                if (image.pixelColor(x, y).lightness() > 200) ++n;
        return n;
    };
    EXPECT_GT(whiteIn(f.render()), 50);
    f.add(SourceType::screen);
    f.frames.setFrame(f.scene.sources.back().id, test::solidFrame(Qt::black));
    EXPECT_EQ(whiteIn(f.render()), 0);
}

TEST(ContentLayer, TextImageAndWebShowThePlaceholder) {
    for (ContentType type : {ContentType::text, ContentType::image, ContentType::web}) {
        Fixture f;
        f.scene = test::solidScene(Qt::black);
        f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
        Source& content = f.add(SourceType::content);
        content.configuration.contentType = type;
        const QImage image = f.render();
        int grey = 0;
        for (int y = 380; y < 520; ++y)
            for (int x = 700; x < 900; ++x)
                if (near(image.pixelColor(x, y), QColor(142, 142, 147), 30)) ++grey;
        EXPECT_GT(grey, 100) << toString(type);
    }
}

TEST(ContentLayer, SlidesDrawTheDeckAndTurnPagesOnClicks) {
    Fixture f;
    Source& content = f.add(SourceType::content);
    content.configuration.contentType = ContentType::slides;
    SlidesResource deck;
    for (int i = 0; i < 3; ++i) {
        Slide s;
        s.backgroundColor = {i == 0 ? 1.0 : 0.0, i == 1 ? 1.0 : 0.0, i == 2 ? 1.0 : 0.0, 1};
        deck.slides.push_back(s);
    }
    deck.currentSlideIndex = 1;
    content.configuration.slidesResource = deck;
    EXPECT_PIXEL(f.render(), 20, 20, QColor(0, 255, 0), 1);
    const PageControlLayout control =
        SlidesRenderer::pageControlLayout(QSizeF(kSize), 1, 3, nullptr);
    EXPECT_TRUE(f.renderer.click(control.next.center(), QSizeF(kSize), f.in, nullptr, 10));
    // The new page fades in over 0.3 seconds: halfway, half of each.
    EXPECT_PIXEL(f.render(10.15), 20, 20, QColor(0, 128, 128), 3);
    EXPECT_TRUE(f.renderer.isAnimating(10.15));
    EXPECT_PIXEL(f.render(10.3), 20, 20, QColor(0, 0, 255), 1);
    EXPECT_FALSE(f.renderer.click(control.next.center(), QSizeF(kSize), f.in, nullptr, 11));  // last page
    EXPECT_FALSE(f.renderer.click(QPointF(800, 100), QSizeF(kSize), f.in, nullptr, 11));
    // A rebuilt composition goes back to the stored page.
    f.in.sceneUpdateTimestamp = 1000;
    EXPECT_PIXEL(f.render(), 20, 20, QColor(0, 255, 0), 1);
}


TEST(CameraLayer, FullCameraWithAScreenShowsNoScreenAnywhere) {
    const QColor screenColour(220, 0, 220);
    const QColor cameraColour(0, 200, 0);
    Fixture f;
    f.scene.layout = SceneLayout::fullCamera;
    Source& cam = f.add(SourceType::camera, cameraColour);
    cam.configuration.cameraShape = CameraShape::verticalRectangle;
    cam.configuration.cameraBorderEnabled = false;
    Source& screen = f.add(SourceType::screen, screenColour);
    screen.configuration.scale = 1;
    screen.configuration.shadowEnabled = false;
    const QImage image = f.render();
    test::keep(image, "fullcamera-with-screen");
    const CameraBox box = SceneLayoutHelper::calculateCameraTransform(
        cam.configuration, SceneLayout::fullCamera,
        *SceneLayoutHelper::calculateFrames(SceneLayout::fullCamera, QSizeF(kSize)).cameraFrame);
    const QRectF inner = box.rect().adjusted(2, 2, -2, -2);
    const QRectF outer = box.rect().adjusted(-2, -2, 2, 2);
    int outside = 0;
    int inside = 0;
    for (int y = 1; y < kSize.height(); y += 8)
        for (int x = 1; x < kSize.width(); x += 8) {
            const QPointF centre(x + 0.5, y + 0.5);
            const QColor c = image.pixelColor(x, y);
            EXPECT_FALSE(near(c, screenColour, 80)) << "screen colour at " << x << "," << y;
            if (inner.contains(centre)) {
                ++inside;
                EXPECT_TRUE(near(c, cameraColour, 2)) << "at " << x << "," << y << ": " << test::describe(c);
            } else if (!outer.contains(centre)) {
                ++outside;
                EXPECT_TRUE(near(c, kBackground, 2)) << "at " << x << "," << y << ": " << test::describe(c);
            }
        }
    // Most of the canvas lies outside the 405 by 720 box, and the screen
    // would have covered much of it at scale 1.
    EXPECT_GT(outside, 10000);
    EXPECT_GT(inside, 4000);

    // The same sources in fullScreen do show the screen there, so the colour
    // would have been seen.
    f.scene.layout = SceneLayout::fullScreen;
    EXPECT_PIXEL(f.render(), 100, 450, screenColour, 2);
}

TEST(ContentLayer, PlaceholderShowsTheSourceNameUnderTheSymbol) {
    // The grey symbol and name on black: every drawn pixel is lit.
    const auto lit = [](const QImage& image, const QRect& area, const QRect& skip = QRect()) {
        QRect box;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                if (!skip.contains(x, y) && image.pixelColor(x, y).lightness() > 40) box |= QRect(x, y, 1, 1);
        return box;
    };
    const QString name = QStringLiteral("MMMMMMMMMMMMMMMMMMMMMMMM");
    for (ContentType type : {ContentType::text, ContentType::image, ContentType::web}) {
        const auto render = [&](const std::string& sourceName) {
            Fixture f;
            f.scene = test::solidScene(Qt::black);
            f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
            Source& content = f.add(SourceType::content);
            content.name = sourceName;
            content.configuration.contentType = type;
            return f.render();
        };
        const QImage nameless = render("");
        const QImage named = render(name.toStdString());
        test::keep(named, "placeholder-name-" + std::string(toString(type)));
        const QRect area(300, 300, 1000, 300);
        // Without a name only the 40-point symbol is drawn, centred.
        const QRect symbol = lit(nameless, area);
        ASSERT_FALSE(symbol.isNull()) << toString(type);
        EXPECT_LE(symbol.width(), 44) << toString(type);
        EXPECT_NEAR(symbol.center().x(), 800, 3) << toString(type);
        // With it, the name's pixels stand beside the symbol's column, under
        // the symbol, as wide as the name at 13 points.
        const QRect symbolColumn(symbol.left() - 2, area.top(), symbol.width() + 4, area.height());
        const QRect text = lit(named, area, symbolColumn);
        ASSERT_FALSE(text.isNull()) << toString(type);
        // The symbol (40 high) and the spacing of 8 come first.
        const QRect all = lit(named, area);
        EXPECT_GE(text.top() - all.top(), 36) << toString(type);
        EXPECT_NEAR(text.height(), 13 * 0.75, 4) << toString(type);  // capitals of a 13-point font
        const double advance =
            PixelFont::metrics(PixelFont::system(13, QFont::Normal, &named), &named).horizontalAdvance(name);
        EXPECT_NEAR(text.width(), advance, 4) << toString(type);
        EXPECT_NEAR(text.center().x(), 800, 3) << toString(type);
        // Grey, as the symbol.
        int grey = 0;
        for (int y = text.top(); y <= text.bottom(); ++y)
            for (int x = text.left(); x <= text.right(); ++x)
                if (near(named.pixelColor(x, y), QColor(142, 142, 147), 12)) ++grey;
        EXPECT_GT(grey, 50) << toString(type);
    }
}

TEST(CinematicZoom, SlidesInCameraLeftStayPutWhileTheCameraZooms) {
    const QColor slideColour(250, 200, 0);
    const QColor cameraColour(0, 0, 220);
    Fixture f;
    f.scene.layout = SceneLayout::cameraLeft;
    f.scene.cinematicZoomEnabled = true;
    Source& cam = f.add(SourceType::camera, cameraColour);
    cam.configuration.cameraBorderEnabled = false;
    Source& content = f.add(SourceType::content);
    content.configuration.contentType = ContentType::slides;
    SlidesResource deck;
    Slide slide;
    slide.content.clear();
    slide.backgroundColor = {slideColour.redF(), slideColour.greenF(), slideColour.blueF(), 1};
    deck.slides = {slide};
    content.configuration.slidesResource = deck;
    // The content frame starts at 0.4 of 1600 = 640; at 1.1 about the centre
    // an edge there would move to 800 - 160 * 1.1 = 624.
    for (double t : {0.0, 4.0, 8.0}) {
        const QImage image = f.render(t);
        for (int y : {100, 450}) {
            EXPECT_PIXEL(image, 642, y, slideColour, 2) << " at " << t << " s";
            EXPECT_FALSE(near(image.pixelColor(636, y), slideColour, 60)) << "at " << t << " s";
            EXPECT_FALSE(near(image.pixelColor(628, y), slideColour, 60)) << "at " << t << " s";
        }
        EXPECT_PIXEL(image, 1598, 100, slideColour, 2) << " at " << t << " s";
    }
    // The zoom is on meanwhile: the camera's right edge, under the content at
    // 640, has moved in to 624.
    EXPECT_PIXEL(f.render(0), 630, 450, cameraColour, 2);
    const QImage zoomed = f.render(8);
    EXPECT_PIXEL(zoomed, 620, 450, cameraColour, 2);
    EXPECT_PIXEL(zoomed, 630, 450, kBackground, 2);
}

// How far in from a rectangle's top-left corner, along its diagonal, the
// frame's colour starts: a corner of radius R cuts 0.29 R there.
double cornerCut(const QImage& image, QPoint corner, QColor frame) {
    for (int a = 0; a < 40; ++a)
        if (near(image.pixelColor(corner.x() + a, corner.y() + a), frame, 60)) return a + 0.5;
    return 40;
}

TEST(ScreenLayer, CornerRadiusStaysTenAtScaleTwo) {
    const QColor frameColour(0, 0, 160);
    double cuts[2] = {0, 0};
    int i = 0;
    for (double scale : {1.0, 2.0}) {
        Fixture f;
        f.scene = test::solidScene(Qt::white);
        f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
        Source& screen = f.add(SourceType::screen, frameColour);
        screen.configuration.scale = scale;
        screen.configuration.shadowEnabled = false;
        screen.configuration.borderRadius = 10;
        // Offsets bring the top-left corner into the canvas at either scale:
        // 1200 and 720 in the 1920 by 1080 space are 1000 and 600 points.
        screen.configuration.horizontalOffset = 1200;
        screen.configuration.verticalOffset = 720;
        const QRectF r = SourceFrameGeometry::screenFrameRect(QSizeF(kSize), QSizeF(1920, 1080), scale, 1200, 720);
        ASSERT_GE(r.left(), 0);
        ASSERT_GE(r.top(), 0);
        const QPoint corner(int(r.left()), int(r.top()));
        const QImage image = f.render();
        test::keep(image, "corner-radius-scale-" + std::to_string(int(scale)));
        EXPECT_PIXEL(image, corner.x() + 30, corner.y() + 30, frameColour, 2);
        EXPECT_PIXEL(image, corner.x(), corner.y(), QColor(255, 255, 255), 8);
        // Along the top edge, 12 points in: past a 10-point corner, short of a 20-point one.
        EXPECT_PIXEL(image, corner.x() + 12, corner.y(), frameColour, 30);
        EXPECT_PIXEL(image, corner.x(), corner.y() + 12, frameColour, 30);
        cuts[i++] = cornerCut(image, corner, frameColour);
    }
    // 0.29 of 10 is 2.9 (a radius of 20 would cut 5.9).
    EXPECT_NEAR(cuts[0], 2.9, 1.1);
    EXPECT_NEAR(cuts[1], 2.9, 1.1);
    EXPECT_LE(std::abs(cuts[1] - cuts[0]), 1);
}

TEST(ScreenLayer, ShadowOffsetIsInCanvasPointsOnEveryCanvas) {
    // A sharp black shadow 30 to the right and 20 down of a frame in the
    // canvas middle: where it ends beyond the frame's edges.
    const QColor frameColour(0, 160, 0);
    for (QSize size : {QSize(1600, 900), QSize(800, 450)}) {
        Fixture f;
        f.scene = test::solidScene(Qt::white);
        f.scene.brandingEnabled = f.scene.progressBarEnabled = false;
        Source& screen = f.add(SourceType::screen, frameColour);
        screen.configuration.scale = 0.5;
        screen.configuration.borderRadius = 0;
        screen.configuration.shadowEnabled = true;
        screen.configuration.shadowColor = {0, 0, 0, 1};
        screen.configuration.shadowRadius = 2;
        screen.configuration.shadowX = 30;
        screen.configuration.shadowY = 20;
        const QImage image = f.render(0, size);
        test::keep(image, "shadow-offset-" + std::to_string(size.width()));
        const QRectF r = SourceFrameGeometry::screenFrameRect(QSizeF(size), QSizeF(1920, 1080), 0.5, 0, 0);
        const int midY = int(r.center().y());
        const int midX = int(r.center().x());
        // First light pixel to the right of the frame, and below it.
        int right = int(std::ceil(r.right()));
        while (right < size.width() && image.pixelColor(right, midY).lightness() < 128) ++right;
        int bottom = int(std::ceil(r.bottom()));
        while (bottom < size.height() && image.pixelColor(midX, bottom).lightness() < 128) ++bottom;
        EXPECT_NEAR(right - r.right(), 30, 1.5) << size.width() << " wide";
        EXPECT_NEAR(bottom - r.bottom(), 20, 1.5) << size.width() << " wide";
        // And it is a shadow, not the frame: dark, beyond the frame's green.
        EXPECT_PIXEL(image, int(r.right()) + 15, midY, QColor(0, 0, 0), 8);
        EXPECT_PIXEL(image, int(r.right()) - 3, midY, frameColour, 2);
        // Left of the frame, where the shifted shadow does not reach: white.
        EXPECT_PIXEL(image, int(r.left()) - 5, midY, QColor(255, 255, 255), 4);
    }
}

}  // namespace
}  // namespace orvane
