#include <gtest/gtest.h>

#include <QPainter>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "composition/SceneRenderer.h"
#include "composition/TransitionPlayer.h"

namespace orvane {
namespace transition_render_test {

using test::near;

const QSize kSize(160, 90);
const QColor kRed(255, 0, 0);
const QColor kBlue(0, 0, 255);
const QColor kBlack(0, 0, 0);

QImage frameAt(TransitionType type, double progress) {
    const auto leaving = [](QPainter& p) { p.fillRect(QRectF(0, 0, 160, 90), kRed); };
    const auto entering = [](QPainter& p) { p.fillRect(QRectF(0, 0, 160, 90), kBlue); };
    return test::renderImage(kSize, [&](QPainter& p) {
        TransitionPlayer::paintFrame(p, QSizeF(kSize), type, progress, leaving, entering);
    });
}

struct Probe {
    QPoint at;
    QColor colour;
};

struct TransitionCase {
    TransitionType type;
    std::vector<Probe> atStart, atMiddle, atEnd;
};

class TransitionFrames : public ::testing::TestWithParam<TransitionCase> {};

void check(TransitionType type, double progress, const std::vector<Probe>& probes) {
    const QImage image = frameAt(type, progress);
    for (const Probe& p : probes) {
        const QColor actual = image.pixelColor(p.at);
        EXPECT_TRUE(near(actual, p.colour, 3))
            << toString(type) << " at t=" << progress << " (" << p.at.x() << "," << p.at.y()
            << "): " << test::describe(actual) << " expected " << test::describe(p.colour);
    }
}

TEST_P(TransitionFrames, StartMiddleEnd) {
    const TransitionCase& c = GetParam();
    check(c.type, 0, c.atStart);
    check(c.type, 0.5, c.atMiddle);
    check(c.type, 1, c.atEnd);
}

const std::vector<Probe> kAllRed{{{1, 1}, kRed}, {{80, 45}, kRed}, {{158, 88}, kRed}};
const std::vector<Probe> kAllBlue{{{1, 1}, kBlue}, {{80, 45}, kBlue}, {{158, 88}, kBlue}};
// Half of each, the entering picture over the leaving one: blue 0.5 over red 0.25.
const QColor kHalfFade(64, 0, 128);

INSTANTIATE_TEST_SUITE_P(
    AllNine, TransitionFrames,
    ::testing::Values(
        TransitionCase{TransitionType::none, kAllBlue, kAllBlue, kAllBlue},
        TransitionCase{TransitionType::fade, kAllRed, {{{1, 1}, kHalfFade}, {{80, 45}, kHalfFade}}, kAllBlue},
        TransitionCase{TransitionType::crossDissolve, kAllRed, {{{158, 88}, kHalfFade}}, kAllBlue},
        // Left: the new picture comes from the right, the old leaves over the left edge.
        TransitionCase{TransitionType::slideLeft, kAllRed,
                       {{{78, 45}, kRed}, {{81, 45}, kBlue}, {{1, 1}, kRed}, {{158, 1}, kBlue}}, kAllBlue},
        TransitionCase{TransitionType::slideRight, kAllRed, {{{78, 45}, kBlue}, {{81, 45}, kRed}}, kAllBlue},
        TransitionCase{TransitionType::slideUp, kAllRed, {{{80, 43}, kRed}, {{80, 46}, kBlue}}, kAllBlue},
        TransitionCase{TransitionType::slideDown, kAllRed, {{{80, 43}, kBlue}, {{80, 46}, kRed}}, kAllBlue},
        // Scale: the new picture grows from 0.8 over the old one, which shrinks
        // opaque: at the start the old shows only around the new.
        TransitionCase{TransitionType::scale, {{{80, 45}, kBlue}, {{10, 45}, kRed}, {{80, 6}, kRed}},
                       {{{80, 45}, kBlue}, {{5, 45}, kBlack}, {{10, 45}, kBlue}, {{80, 3}, kBlack}}, kAllBlue},
        TransitionCase{TransitionType::fadeScale, kAllRed,
                       {{{80, 45}, kHalfFade}, {{2, 45}, kBlack}, {{80, 1}, kBlack}}, kAllBlue}));

TEST(TransitionPlayer, DisabledTransitionFadesOverAQuarterSecond) {
    SceneTransitionConfig config;
    config.enabled = false;
    TransitionPlayer player;
    player.start(TransitionEffect::plan(config), 10);
    EXPECT_TRUE(player.isActive(10.1));
    EXPECT_FALSE(player.isActive(10.25));
    const auto leaving = [](QPainter& p) { p.fillRect(QRectF(0, 0, 160, 90), kRed); };
    const auto entering = [](QPainter& p) { p.fillRect(QRectF(0, 0, 160, 90), kBlue); };
    const QImage middle = test::renderImage(
        kSize, [&](QPainter& p) { player.paint(p, QSizeF(kSize), 10.125, leaving, entering); });
    EXPECT_TRUE(near(middle.pixelColor(80, 45), kHalfFade, 3)) << test::describe(middle.pixelColor(80, 45));
    const QImage after =
        test::renderImage(kSize, [&](QPainter& p) { player.paint(p, QSizeF(kSize), 10.3, leaving, entering); });
    EXPECT_TRUE(near(after.pixelColor(80, 45), kBlue, 1));
}

TEST(TransitionPlayer, NoneCutsAtOnce) {
    SceneTransitionConfig config;
    config.type = TransitionType::none;
    TransitionPlayer player;
    player.start(TransitionEffect::plan(config), 0);
    EXPECT_FALSE(player.isActive(0));
}

TEST(TransitionPlayer, TwoCompositionsWithTheirOwnRenderers) {
    // The leaving composition keeps its own renderer (and so its overlays and
    // images); the entering one is new. Both draw at once, group-faded.
    StreamingScene oldScene = test::solidScene(kRed);
    StreamingScene newScene = test::solidScene(kBlue);
    for (StreamingScene* s : {&oldScene, &newScene}) {
        s->sources = {test::makeSource(SourceType::camera)};
        s->brandingEnabled = s->progressBarEnabled = false;
    }
    SceneRenderer leavingRenderer, enteringRenderer;
    SceneRenderInputs leavingIn, enteringIn;
    leavingIn.scene = &oldScene;
    enteringIn.scene = &newScene;
    SceneTransitionConfig config;
    config.type = TransitionType::slideUp;
    config.duration = 1;
    TransitionPlayer player;
    player.start(TransitionEffect::plan(config), 0);
    const QImage image = test::renderImage(QSize(320, 180), [&](QPainter& p) {
        player.paint(
            p, QSizeF(320, 180), 0.5, [&](QPainter& q) { leavingRenderer.render(q, QSizeF(320, 180), leavingIn, 0.5); },
            [&](QPainter& q) { enteringRenderer.render(q, QSizeF(320, 180), enteringIn, 0.5); });
    });
    EXPECT_TRUE(near(image.pixelColor(160, 80), kRed, 2));
    EXPECT_TRUE(near(image.pixelColor(160, 100), kBlue, 2));
}

}  // namespace
}  // namespace orvane
