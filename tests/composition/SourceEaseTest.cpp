#include <gtest/gtest.h>

#include <QPainter>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "composition/EaseInOut.h"
#include "composition/SceneRenderer.h"
#include "composition/TestFrameSource.h"

namespace orvane {
namespace source_ease_test {

using test::near;

const QSize kSize(640, 360);
const QColor kBackground(20, 40, 60);
const QColor kScreen(200, 40, 40);

// A full-screen scene, first with no sources, then with one red screen that
// covers the middle of the canvas.
struct Fixture {
    StreamingScene scene = test::solidScene(kBackground);
    TestFrameSource frames;
    SceneRenderer renderer;
    SceneRenderInputs in;

    explicit Fixture(bool rebuilds) {
        scene.brandingEnabled = false;
        scene.progressBarEnabled = false;
        in.scene = &scene;
        in.frames = &frames;
        in.rebuildsOnIdentityChange = rebuilds;
    }
    void addScreen() {
        Source screen = test::makeSource(SourceType::screen);
        screen.configuration.borderEnabled = false;
        screen.configuration.shadowEnabled = false;
        scene.sources.push_back(screen);
        frames.setFrame(screen.id, test::solidFrame(kScreen));
    }
    QColor centreAt(double now) {
        const QImage image =
            test::renderImage(kSize, [&](QPainter& p) { renderer.render(p, QSizeF(kSize), in, now); });
        return image.pixelColor(kSize.width() / 2, kSize.height() / 2 + 60);
    }
};

QColor mix(QColor from, QColor to, double amount) {
    return QColor::fromRgbF(float(from.redF() + (to.redF() - from.redF()) * amount),
                            float(from.greenF() + (to.greenF() - from.greenF()) * amount),
                            float(from.blueF() + (to.blueF() - from.blueF()) * amount));
}

TEST(SourceEase, InPlaceHostEasesANewSourceInOverAFifthOfASecond) {
    Fixture f(false);
    EXPECT_TRUE(near(f.centreAt(10.0), kBackground, 2));
    f.addScreen();
    // The change is seen at 11.0: the old picture is still all there.
    EXPECT_TRUE(near(f.centreAt(11.0), kBackground, 2));
    EXPECT_TRUE(f.renderer.isAnimating(11.05));
    for (double dt : {0.05, 0.1, 0.15}) {
        const QColor expected = mix(kBackground, kScreen, EaseInOut::value(dt / SceneRenderer::kSourceEase));
        const QColor actual = f.centreAt(11.0 + dt);
        EXPECT_TRUE(near(actual, expected, 4)) << "at +" << dt << "s: " << test::describe(actual) << " expected "
                                               << test::describe(expected);
    }
    EXPECT_TRUE(near(f.centreAt(11.2), kScreen, 2));
    EXPECT_FALSE(f.renderer.isAnimating(11.25));
}

TEST(SourceEase, RemovingASourceEasesItOut) {
    Fixture f(false);
    f.addScreen();
    EXPECT_TRUE(near(f.centreAt(1.0), kScreen, 2));
    f.scene.sources.clear();
    f.centreAt(2.0);
    const QColor half = f.centreAt(2.1);
    EXPECT_TRUE(near(half, mix(kScreen, kBackground, 0.5), 4)) << test::describe(half);
}

TEST(SourceEase, RebuildingHostCutsAtOnce) {
    Fixture f(true);
    f.centreAt(1.0);
    f.addScreen();
    EXPECT_TRUE(near(f.centreAt(2.0), kScreen, 2));
    EXPECT_FALSE(f.renderer.isAnimating(2.05));
}

TEST(SourceEase, AnotherSceneIsACut) {
    // Another scene in the same place (the preview switching scenes) is not
    // an edit of this one's sources.
    Fixture f(false);
    f.centreAt(1.0);
    f.scene.id = Uuid::generate();
    f.addScreen();
    EXPECT_TRUE(near(f.centreAt(2.0), kScreen, 2));
    EXPECT_TRUE(near(f.centreAt(2.1), kScreen, 2));
}

TEST(SourceEase, OtherEditsDoNotEase) {
    Fixture f(false);
    f.addScreen();
    f.centreAt(1.0);
    f.scene.backgroundColor = CodableColor{0, 0, 1, 1};
    f.in.sceneUpdateTimestamp = 5;
    f.centreAt(2.0);
    EXPECT_FALSE(f.renderer.isAnimating(2.05));
}

}  // namespace
}  // namespace orvane
