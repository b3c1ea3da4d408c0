#include <gtest/gtest.h>

#include <QPainter>
#include <cmath>
#include <limits>
#include <random>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "composition/DrawingOverlay.h"
#include "composition/SceneRenderer.h"
#include "composition/TestFrameSource.h"
#include "composition/TransitionPlayer.h"

namespace orvane {
namespace hostile_input_test {

// Numbers a damaged or hand-edited document could hold. Rendering them must
// not crash; what is drawn does not matter.
const double kHostile[] = {std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           -1e9,
                           -1,
                           0,
                           1e-300,
                           1e9};

TEST(HostileInput, EveryNumberOfTheSceneAndItsOverlays) {
    std::mt19937 random(7);
    const auto pick = [&] { return kHostile[random() % std::size(kHostile)]; };
    for (int round = 0; round < 18; ++round) {
        StreamingScene scene;
        scene.layout = static_cast<SceneLayout>(1 + round % 9);
        scene.gradientDirection = static_cast<GradientDirection>(1 + round % 7);
        scene.gradientColors = {{pick(), pick(), pick(), pick()}, {1, 0, 0, 1}};
        scene.backgroundType = round % 3 == 0 ? BackgroundType::solid : BackgroundType::gradient;
        scene.backgroundColor = {pick(), pick(), pick(), pick()};
        scene.cinematicZoomEnabled = round % 2 == 0;
        TestFrameSource frames;
        for (SourceType type : {SourceType::camera, SourceType::screen, SourceType::window, SourceType::content}) {
            Source s = test::makeSource(type);
            SourceConfiguration& c = s.configuration;
            c.scale = pick();
            c.horizontalOffset = pick();
            c.verticalOffset = pick();
            c.brightness = pick();
            c.borderEnabled = true;
            c.borderWidth = pick();
            c.borderGlow = pick();
            c.borderRadius = pick();
            c.shadowRadius = pick();
            c.shadowX = pick();
            c.shadowY = pick();
            c.cameraShape = static_cast<CameraShape>(1 + round % 3);
            c.cameraSize = static_cast<CameraOverlaySize>(1 + round % 3);
            c.cameraBorderWidth = pick();
            c.cameraBorderGlow = pick();
            c.cameraBorderRadius = pick();
            c.cameraZoom = pick();
            c.cameraWidth = pick();
            c.cameraHeight = pick();
            c.cameraHorizontalPosition = pick();
            c.cameraVerticalPosition = pick();
            c.cameraBrightness = pick();
            c.cameraContrast = pick();
            if (type == SourceType::content) {
                c.contentType = ContentType::slides;
                SlidesResource deck;
                Slide slide;
                slide.textScale = pick();
                slide.imageUrl = "/nonexistent/picture.png";
                slide.imagePosition = static_cast<ImagePosition>(1 + round % 5);
                deck.slides = {slide};
                deck.currentSlideIndex = round % 2 ? -5 : 0;
                c.slidesResource = deck;
            }
            frames.setFrame(s.id, test::solidFrame(Qt::gray, round % 4 == 0 ? QSize(1, 1) : QSize(64, 36)));
            scene.sources.push_back(s);
        }
        BrandingConfig branding;
        branding.enabled = true;
        branding.text = "x";
        branding.textSize = pick();
        branding.logoWidth = pick();
        branding.logoHeight = pick();
        branding.opacity = pick();
        ProgressBarConfig progress;
        progress.enabled = true;
        progress.size = pick();
        progress.textSize = pick();
        progress.opacity = pick();
        progress.steps.resize(3);
        progress.steps[1].order = std::numeric_limits<int>::max();
        progress.orientation = round % 2 ? ProgressBarOrientation::vertical : ProgressBarOrientation::horizontal;

        SceneRenderer renderer;
        SceneRenderInputs in{&scene, &branding, &progress, true, true, pick(), &frames};
        for (QSize size : {QSize(1, 1), QSize(96, 54)}) {
            test::renderImage(size, [&](QPainter& p) { renderer.render(p, QSizeF(size), in, pick()); });
            renderer.click(QPointF(pick(), pick()), QSizeF(size), in, nullptr, pick());
        }
        // A canvas of no size, or of a size that is not a number, draws nothing.
        test::renderImage(QSize(8, 8), [&](QPainter& p) {
            renderer.render(p, QSizeF(0, 0), in, 0);
            renderer.render(p, QSizeF(pick(), pick()), in, 0);
        });
    }
    SUCCEED();
}

TEST(HostileInput, TransitionsAndDrawings) {
    for (double progress : kHostile)
        for (TransitionType type : allCases<TransitionType>())
            test::renderImage(QSize(16, 9), [&](QPainter& p) {
                TransitionPlayer::paintFrame(
                    p, QSizeF(16, 9), type, progress, [](QPainter& q) { q.fillRect(0, 0, 16, 9, Qt::red); },
                    [](QPainter& q) { q.fillRect(0, 0, 16, 9, Qt::blue); });
            });
    DrawingLayers layers;
    DrawingOverlay overlay;
    DrawingSelection sel;
    for (DrawingTool tool : allCases<DrawingTool>()) {
        sel.tool = tool;
        for (double v : kHostile) {
            sel.strokeWidth = v;
            overlay.pointerMoved({v, 1}, true, sel, layers);
            overlay.pointerMoved({1, v}, true, sel, layers);
            overlay.pointerReleased({v, v}, true, sel, layers);
        }
    }
    test::renderImage(QSize(32, 32), [&](QPainter& p) { overlay.paint(p, layers, sel); });
    sel.tool = DrawingTool::eraser;
    for (double v : kHostile) overlay.pointerMoved({v, v}, true, sel, layers);
    SUCCEED();
}

}  // namespace
}  // namespace orvane
