#include <gtest/gtest.h>

#include <QPainter>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "composition/SceneRenderer.h"
#include "composition/StatusPainter.h"
#include "composition/TestFrameSource.h"

namespace orvane {
namespace capture_spinner_test {

const QSize kSize(640, 360);

struct Fixture {
    StreamingScene scene = test::solidScene(QColor(20, 40, 60));
    TestFrameSource frames;
    SceneRenderer renderer;
    SceneRenderInputs in;
    Uuid screen;

    Fixture() {
        scene.brandingEnabled = false;
        scene.progressBarEnabled = false;
        scene.sources.push_back(test::makeSource(SourceType::screen));
        screen = scene.sources.back().id;
        frames.setState(screen, SourceFrame::startingUp());
        in.scene = &scene;
        in.frames = &frames;
    }
    // The ring only: the square around the middle of the ring, above the text.
    QImage ringAt(double now) {
        const QImage image =
            test::renderImage(kSize, [&](QPainter& p) { renderer.render(p, QSizeF(kSize), in, now); });
        return image.copy(QRect(kSize.width() / 2 - 20, kSize.height() / 2 - 10 - 20, 40, 40));
    }
};

TEST(CaptureSpinner, TurnsOneSpokeAnEighthOfASecond) {
    Fixture f;
    const QImage at0 = f.ringAt(0);
    const QImage within = f.ringAt(0.1);
    const QImage next = f.ringAt(1.0 / StatusPainter::kSpinnerSteps + 0.01);
    const QImage turned = f.ringAt(1.0 + 0.01);
    EXPECT_EQ(at0, within) << "still within one step";
    EXPECT_NE(at0, next) << "a spoke further after an eighth of a second";
    EXPECT_EQ(at0, turned) << "a full turn a second";
    // The ring is drawn at all: it is brighter than the background.
    int bright = 0;
    for (int y = 0; y < at0.height(); ++y)
        for (int x = 0; x < at0.width(); ++x) bright += at0.pixelColor(x, y).lightness() > 120;
    EXPECT_GT(bright, 20);
}

TEST(CaptureSpinner, KeepsTheHostDrawingOnlyWhileACaptureStarts) {
    Fixture f;
    f.ringAt(0);
    EXPECT_TRUE(f.renderer.isAnimating(0.05));
    f.frames.setFrame(f.screen, test::solidFrame(QColor(200, 40, 40)));
    f.ringAt(0.5);
    EXPECT_FALSE(f.renderer.isAnimating(0.55));
    f.frames.setState(f.screen, SourceFrame::failure("Capture failed"));
    f.ringAt(1.0);
    EXPECT_FALSE(f.renderer.isAnimating(1.05));
}

TEST(CaptureSpinner, ADeckPictureOnItsWayKeepsTheHostDrawing) {
    StreamingScene scene = test::solidScene(QColor(20, 40, 60));
    scene.brandingEnabled = false;
    scene.progressBarEnabled = false;
    Source deck = test::makeSource(SourceType::content);
    deck.configuration.contentType = ContentType::slides;
    SlidesResource slides;
    Slide slide;
    slide.content = "Text";
    // Nothing answers here, but not before the event loop runs.
    slide.imageUrl = "http://127.0.0.1:1/picture.png";
    slides.slides = {slide};
    deck.configuration.slidesResource = slides;
    scene.sources.push_back(deck);
    SceneRenderer renderer;
    SceneRenderInputs in;
    in.scene = &scene;
    test::renderImage(kSize, [&](QPainter& p) { renderer.render(p, QSizeF(kSize), in, 0); });
    EXPECT_TRUE(renderer.isAnimating(0.05));
    scene.sources.front().configuration.slidesResource->slides.front().imageUrl.reset();
    test::renderImage(kSize, [&](QPainter& p) { renderer.render(p, QSizeF(kSize), in, 0.5); });
    EXPECT_FALSE(renderer.isAnimating(0.55));
}

}  // namespace
}  // namespace orvane
