#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <string>

#include "slides/SlideImageLoader.h"
#include "slides/SlidesRenderer.h"

namespace orvane {
namespace slide_scroll_test {

const QSize kView(960, 540);

SlidesResource deckWithLines(int lines) {
    Slide slide;
    slide.backgroundColor = {0.1, 0.1, 0.2, 1};
    slide.content = "# Agenda\n";
    for (int i = 1; i <= lines; ++i) slide.content += "\n- Point number " + std::to_string(i) + "\n";
    SlidesResource deck;
    deck.slides = {slide, slide};
    deck.textColor = {1, 1, 1, 1};
    return deck;
}

struct Drawn {
    QImage image;
    double reach = 0;
};

Drawn draw(const SlidesResource& deck, double scroll) {
    SlideImageLoader loader;
    SlidesRenderer renderer(loader);
    Drawn d;
    d.image = QImage(kView, QImage::Format_ARGB32_Premultiplied);
    d.image.fill(Qt::black);
    QPainter p(&d.image);
    d.reach = renderer.paint(p, QRectF(QPointF(0, 0), QSizeF(kView)), deck, 0, scroll).reach;
    return d;
}

// The rows above the page control: the slide's body.
QImage body(const QImage& image, const SlidesResource& deck) {
    const PageControlLayout control =
        SlidesRenderer::pageControlLayout(QSizeF(kView), 0, static_cast<int>(deck.slides.size()), &image);
    return image.copy(0, 0, kView.width(), static_cast<int>(control.background.top()));
}

QImage control(const QImage& image, const SlidesResource& deck) {
    const PageControlLayout c =
        SlidesRenderer::pageControlLayout(QSizeF(kView), 0, static_cast<int>(deck.slides.size()), &image);
    return image.copy(c.background.toAlignedRect());
}

TEST(SlideScroll, LongTextScrollsAsFarAsItReaches) {
    const SlidesResource deck = deckWithLines(40);
    const Drawn top = draw(deck, 0);
    ASSERT_GT(top.reach, 100) << "forty points do not fit in 540 points";
    const Drawn down = draw(deck, 120);
    EXPECT_DOUBLE_EQ(down.reach, top.reach);
    EXPECT_NE(body(top.image, deck), body(down.image, deck));
    // The body moved up by the scroll: what was at y + 120 is now at y.
    const QImage before = body(top.image, deck);
    const QImage after = body(down.image, deck);
    EXPECT_EQ(after.copy(0, 40, kView.width(), 200), before.copy(0, 160, kView.width(), 200));
    // The page control stays where it is.
    EXPECT_EQ(control(top.image, deck), control(down.image, deck));
    // Beyond either end the scroll holds at the end.
    EXPECT_EQ(draw(deck, top.reach + 500).image, draw(deck, top.reach).image);
    EXPECT_EQ(draw(deck, -50).image, top.image);
}

TEST(SlideScroll, TextThatFitsDoesNotMove) {
    const SlidesResource deck = deckWithLines(2);
    const Drawn top = draw(deck, 0);
    EXPECT_EQ(top.reach, 0);
    EXPECT_EQ(draw(deck, 200).image, top.image);
}

}  // namespace
}  // namespace orvane
