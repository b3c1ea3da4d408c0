#include <gtest/gtest.h>

#include <QPainter>
#include <string>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "composition/SceneRenderer.h"
#include "slides/SlidesRenderer.h"

namespace orvane {
namespace deck_scroll_test {

const QSize kSize(960, 540);

struct Fixture {
    StreamingScene scene = test::solidScene(QColor(20, 40, 60));
    SceneRenderer renderer;
    SceneRenderInputs in;

    explicit Fixture(int lines) {
        scene.brandingEnabled = false;
        scene.progressBarEnabled = false;
        Source deck = test::makeSource(SourceType::content);
        deck.configuration.contentType = ContentType::slides;
        SlidesResource slides;
        Slide slide;
        slide.content = "# Notes\n";
        for (int i = 1; i <= lines; ++i) slide.content += "\n- Line " + std::to_string(i) + "\n";
        slides.slides = {slide, slide};
        deck.configuration.slidesResource = slides;
        scene.sources.push_back(deck);
        in.scene = &scene;
    }
    const Source& deck() const { return scene.sources.front(); }
    QImage render(double now = 10) {
        return test::renderImage(kSize, [&](QPainter& p) { renderer.render(p, QSizeF(kSize), in, now); });
    }
    bool scroll(double dy, QPointF at = QPointF(480, 200)) { return renderer.scroll(at, dy, QSizeF(kSize), in); }
};

TEST(DeckScroll, ScrollsTheBodyWithinItsReach) {
    Fixture f(40);
    const QImage top = f.render();
    EXPECT_TRUE(f.scroll(80));
    EXPECT_DOUBLE_EQ(f.renderer.slideScroll(f.deck()), 80);
    EXPECT_NE(f.render(), top);
    // Far past the end: held at the end, and a further scroll changes nothing.
    EXPECT_TRUE(f.scroll(1e6));
    const double end = f.renderer.slideScroll(f.deck());
    EXPECT_GT(end, 80);
    EXPECT_LT(end, 1e6);
    EXPECT_FALSE(f.scroll(10));
    // And back to the top.
    EXPECT_TRUE(f.scroll(-1e9));
    EXPECT_DOUBLE_EQ(f.renderer.slideScroll(f.deck()), 0);
    EXPECT_EQ(f.render(), top);
}

TEST(DeckScroll, ShortTextAndOtherPlacesDoNotScroll) {
    Fixture f(2);
    f.render();
    EXPECT_FALSE(f.scroll(50));
    Fixture g(40);
    g.render();
    EXPECT_FALSE(g.scroll(std::nan("")));
    g.scene.layout = SceneLayout::cameraLeft;  // content from 0.4 W
    g.render();
    EXPECT_FALSE(g.scroll(50, QPointF(100, 200)));
    EXPECT_TRUE(g.scroll(50, QPointF(700, 200)));
}

TEST(DeckScroll, ANewPageStartsAtTheTop) {
    Fixture f(40);
    f.render(10);
    ASSERT_TRUE(f.scroll(100));
    const PageControlLayout control =
        SlidesRenderer::pageControlLayout(QSizeF(kSize), 0, 2, nullptr);
    ASSERT_TRUE(f.renderer.click(control.next.center(), QSizeF(kSize), f.in, nullptr, 11));
    EXPECT_DOUBLE_EQ(f.renderer.slideScroll(f.deck()), 0);
}

}  // namespace
}  // namespace orvane
