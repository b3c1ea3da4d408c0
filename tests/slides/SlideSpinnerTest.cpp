#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "slides/SlideImageLoader.h"
#include "slides/SlidesRenderer.h"

namespace orvane {
namespace slide_spinner_test {

const QSize kView(960, 540);

struct Drawn {
    QImage image;
    bool loading = false;
};

// Drawn without running the event loop, so that a fetch stays on its way.
Drawn draw(SlidesRenderer& renderer, const SlidesResource& deck, double now) {
    Drawn d;
    d.image = QImage(kView, QImage::Format_ARGB32_Premultiplied);
    d.image.fill(Qt::black);
    QPainter p(&d.image);
    d.loading = renderer.paint(p, QRectF(QPointF(0, 0), QSizeF(kView)), deck, 0, 0, now).loading;
    return d;
}

TEST(SlideSpinner, APictureOnItsWayTurnsItsSpinner) {
    SlidesResource deck;
    Slide slide;
    slide.content = "Text";
    // Nothing answers on this port, but not before the event loop runs.
    slide.imageUrl = "http://127.0.0.1:1/picture.png";
    slide.imagePosition = ImagePosition::top;
    deck.slides = {slide};
    SlideImageLoader loader;
    SlidesRenderer renderer(loader);
    const Drawn at0 = draw(renderer, deck, 0);
    ASSERT_TRUE(at0.loading);
    const Drawn within = draw(renderer, deck, 0.1);
    const Drawn next = draw(renderer, deck, 0.13);
    const Drawn turned = draw(renderer, deck, 1.01);
    EXPECT_EQ(at0.image, within.image);
    EXPECT_NE(at0.image, next.image);
    EXPECT_EQ(at0.image, turned.image);
}

TEST(SlideSpinner, TextAloneIsNotLoading) {
    SlidesResource deck;
    Slide slide;
    slide.content = "Text";
    deck.slides = {slide};
    SlideImageLoader loader;
    SlidesRenderer renderer(loader);
    EXPECT_FALSE(draw(renderer, deck, 0).loading);
}

}  // namespace
}  // namespace orvane
