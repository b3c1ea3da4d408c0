#include <QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "ConsoleTestSupport.h"
#include "composition/TestFrameSource.h"
#include "console/stages/CompositionSurface.h"
#include "document/PresetTemplates.h"
#include "document/SourceFactory.h"

namespace orvane {
namespace composition_surface_tests {

const QSize kCanvas(320, 180);

// Hands out the test frames and counts, per source, how often it was asked.
class CountingFrames : public FrameSource {
public:
    TestFrameSource frames;
    mutable std::map<Uuid, int> asked;

    SourceFrame latestFrame(const Source& source) const override {
        ++asked[source.id];
        return frames.latestFrame(source);
    }
};

// A scene of one screen source on a black ground, its frame one colour.
StreamingScene screenScene(const std::string& name, CountingFrames& frames, QColor colour) {
    StreamingScene scene = makeScene(name);
    scene.layout = SceneLayout::fullScreen;
    scene.backgroundType = BackgroundType::solid;
    scene.backgroundColor = CodableColor{0, 0, 0, 1};
    scene.brandingEnabled = false;
    scene.progressBarEnabled = false;
    SourceFactory::addScreenSource(scene, DisplayChoice{1, "Main Display"});
    frames.frames.setFrame(scene.sources.front().id, TestFrameSource::patternFrame(QSize(640, 360), colour));
    return scene;
}

// What going live does to a scene: the same content under a fresh id.
StreamingScene goneLive(StreamingScene scene) {
    scene.id = Uuid::generate();
    return scene;
}

SceneTransitionConfig transition(TransitionType type, double seconds) {
    SceneTransitionConfig config;
    config.enabled = true;
    config.type = type;
    config.duration = seconds;
    return config;
}

QImage paint(CompositionSurface& surface, CountingFrames& frames, double now, QSize image = kCanvas) {
    QImage picture(image, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::black);
    QPainter p(&picture);
    CompositionSurface::Context context;
    context.frames = &frames;
    surface.paint(p, QSizeF(kCanvas), context, now);
    return picture;
}

// Surfaces paint with the application's fonts.
struct Surfaces : ::testing::Test {
    void SetUp() override { test::ensureApplication(); }
};

// The typical colour of the middle of the picture: the channel-wise median
// over a block, so that the test pattern's grid and diagonal do not count.
QColor centre(const QImage& image) {
    std::vector<int> r, g, b;
    for (int y = kCanvas.height() / 2 - 20; y < kCanvas.height() / 2 + 20; ++y)
        for (int x = kCanvas.width() / 2 - 30; x < kCanvas.width() / 2 + 30; ++x) {
            const QColor c = image.pixelColor(x, y);
            r.push_back(c.red());
            g.push_back(c.green());
            b.push_back(c.blue());
        }
    for (auto* v : {&r, &g, &b}) std::nth_element(v->begin(), v->begin() + v->size() / 2, v->end());
    return QColor(r[r.size() / 2], g[g.size() / 2], b[b.size() / 2]);
}

TEST_F(Surfaces, UpdateLiveOnTheSceneAlreadyLivePlaysTheTransitionAgain) {
    CountingFrames frames;
    CompositionSurface program(CompositionSurface::EmptyPicture::mock, true);
    const StreamingScene desk = screenScene("Desk", frames, QColor(200, 30, 30));
    const auto fade = transition(TransitionType::fade, 1.0);
    program.setScene(goneLive(desk), fade, 0);
    EXPECT_FALSE(program.isTransitionActive(0.1)) << "the first picture on a stage just appears";

    program.setScene(goneLive(desk), fade, 10);
    EXPECT_TRUE(program.isTransitionActive(10.5));
    EXPECT_FALSE(program.isTransitionActive(11.01));
    program.setScene(goneLive(desk), fade, 20);
    EXPECT_TRUE(program.isTransitionActive(20.5));
}

TEST_F(Surfaces, ASecondUpdateLiveMidTransitionGoesOnToTheNewestScene) {
    CountingFrames frames;
    CompositionSurface program(CompositionSurface::EmptyPicture::mock, true);
    const auto fade = transition(TransitionType::fade, 1.0);
    program.setScene(goneLive(screenScene("Red", frames, QColor(200, 30, 30))), fade, 0);
    program.setScene(goneLive(screenScene("Green", frames, QColor(30, 200, 30))), fade, 10);
    const StreamingScene blue = goneLive(screenScene("Blue", frames, QColor(30, 30, 200)));
    program.setScene(blue, fade, 10.4);
    ASSERT_TRUE(program.scene());
    EXPECT_EQ(program.scene()->id, blue.id);
    EXPECT_TRUE(program.isTransitionActive(11.0));
    const QColor end = centre(paint(program, frames, 11.5));
    EXPECT_GT(end.blue(), 150);
    EXPECT_LT(end.green(), 80);
    EXPECT_LT(end.red(), 80);
}

TEST_F(Surfaces, ThePreviewNeverAnimates) {
    CountingFrames frames;
    CompositionSurface preview(CompositionSurface::EmptyPicture::mock, false);
    const auto fade = transition(TransitionType::fade, 1.0);
    preview.setScene(screenScene("Red", frames, QColor(200, 30, 30)), fade, 0);
    preview.setScene(screenScene("Green", frames, QColor(30, 200, 30)), fade, 10);
    EXPECT_FALSE(preview.isTransitionActive(10.01));
    const QColor now = centre(paint(preview, frames, 10.01));
    EXPECT_GT(now.green(), 150);
    EXPECT_LT(now.red(), 80);
}

TEST_F(Surfaces, TheLeavingPictureKeepsItsLastFrameWithoutAskingForMore) {
    CountingFrames frames;
    CompositionSurface program(CompositionSurface::EmptyPicture::mock, true);
    const StreamingScene red = goneLive(screenScene("Red", frames, QColor(220, 20, 20)));
    program.setScene(red, transition(TransitionType::fade, 1.0), 0);
    paint(program, frames, 0);
    // The capture behind the red scene stops as soon as it leaves program.
    const Uuid redSource = red.sources.front().id;
    frames.frames.setState(redSource, SourceFrame::startingUp());
    frames.asked.clear();

    const StreamingScene green = goneLive(screenScene("Green", frames, QColor(20, 220, 20)));
    program.setScene(green, transition(TransitionType::fade, 1.0), 10);
    const QColor start = centre(paint(program, frames, 10.0));
    EXPECT_GT(start.red(), 150) << "the last red frame, not a starting capture";
    const QColor halfway = centre(paint(program, frames, 10.5));
    EXPECT_GT(halfway.red(), 60);
    EXPECT_GT(halfway.green(), 60);
    EXPECT_EQ(frames.asked[redSource], 0) << "a leaving picture would restart the capture it asks for";
}

TEST_F(Surfaces, SlidingPicturesStayInsideTheSurface) {
    CountingFrames frames;
    CompositionSurface program(CompositionSurface::EmptyPicture::mock, true);
    const auto slide = transition(TransitionType::slideLeft, 1.0);
    program.setScene(goneLive(screenScene("Red", frames, QColor(220, 20, 20))), slide, 0);
    paint(program, frames, 0);
    program.setScene(goneLive(screenScene("Green", frames, QColor(20, 220, 20))), slide, 10);
    // Painted into an image twice as wide as the surface: the right half is
    // outside it and must stay black.
    const QImage wide = paint(program, frames, 10.5, QSize(kCanvas.width() * 2, kCanvas.height()));
    int outside = 0;
    for (int y = 0; y < wide.height(); ++y)
        for (int x = kCanvas.width(); x < wide.width(); ++x)
            if (wide.pixelColor(x, y) != QColor(Qt::black)) ++outside;
    EXPECT_EQ(outside, 0);
    // Inside, both pictures show halfway through the slide.
    int red = 0, green = 0;
    for (int x = 0; x < kCanvas.width(); ++x) {
        const QColor c = wide.pixelColor(x, kCanvas.height() / 2);
        if (c.red() > 150 && c.green() < 80) ++red;
        if (c.green() > 150 && c.red() < 80) ++green;
    }
    EXPECT_GT(red, 20);
    EXPECT_GT(green, 20);
}

}  // namespace composition_surface_tests
}  // namespace orvane
