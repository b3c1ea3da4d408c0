#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include "slides/MarkdownStyle.h"
#include "slides/SlideGeometry.h"
#include "slides/SlideImageLoader.h"
#include "slides/SlidesRenderer.h"

namespace orvane {
namespace slide_render_test {

bool near(QColor a, QColor e, int tolerance = 3) {
    return std::abs(a.red() - e.red()) <= tolerance && std::abs(a.green() - e.green()) <= tolerance &&
           std::abs(a.blue() - e.blue()) <= tolerance;
}

QImage render(const SlidesResource& deck, int index, QSize size, SlideImageLoader& loader) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter p(&image);
    SlidesRenderer(loader).paint(p, QRectF(QPointF(0, 0), QSizeF(size)), deck, index);
    return image;
}

Slide coloured(double r, double g, double b) {
    Slide s;
    s.content.clear();
    s.backgroundColor = {r, g, b, 1};
    return s;
}

int countNear(const QImage& image, QRect area, QColor colour, int tolerance) {
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (near(image.pixelColor(x, y), colour, tolerance)) ++n;
    return n;
}

TEST(MarkdownStyle, StageNumbers) {
    const MarkdownStyle st = MarkdownStyle::stage(QSizeF(960, 540), 1);
    EXPECT_DOUBLE_EQ(st.r, 0.5);
    EXPECT_DOUBLE_EQ(st.f, 0.8);
    EXPECT_NEAR(st.font(st.h1), 38.4, 1e-12);
    EXPECT_NEAR(st.spacing, 11.2, 1e-12);
    EXPECT_NEAR(st.paragraphLineSpacing, 2.4, 1e-12);
    const MarkdownStyle big = MarkdownStyle::stage(QSizeF(3840, 2160), 1.5);
    EXPECT_DOUBLE_EQ(big.font(big.h2), 36 * 2 * 1.5);
}

TEST(MarkdownStyle, PreviewNumbers) {
    const MarkdownStyle st = MarkdownStyle::preview(QSizeF(200, 150), 1);
    EXPECT_DOUBLE_EQ(st.r, 0.5);
    EXPECT_DOUBLE_EQ(st.f, 0.6);
    EXPECT_NEAR(st.font(st.h1), 19.2, 1e-12);
    EXPECT_NEAR(st.spacing, 6, 1e-12);
    EXPECT_DOUBLE_EQ(st.h1Pad, 0);
}

TEST(SlideGeometry, ImageSizes) {
    const QSizeF view(960, 540);
    EXPECT_DOUBLE_EQ(SlideGeometry::imageUnit(view), 0.5);
    EXPECT_DOUBLE_EQ(*SlideGeometry::maxImageWidth(ImageSize::small, view), 150);
    EXPECT_DOUBLE_EQ(*SlideGeometry::maxImageWidth(ImageSize::medium, view), 250);
    EXPECT_DOUBLE_EQ(*SlideGeometry::maxImageWidth(ImageSize::large, view), 350);
    EXPECT_FALSE(SlideGeometry::maxImageWidth(ImageSize::full, view));
    // No lower limit on small views.
    EXPECT_DOUBLE_EQ(*SlideGeometry::maxImageWidth(ImageSize::medium, QSizeF(192, 108)), 50);
    EXPECT_DOUBLE_EQ(SlideGeometry::imageBoxHeight(ImagePosition::top, view), 378);
    EXPECT_DOUBLE_EQ(SlideGeometry::imageBoxHeight(ImagePosition::left, view), 432);
    EXPECT_EQ(SlideGeometry::fitImage(QSizeF(1000, 500), 250, 378), QSizeF(250, 125));
    EXPECT_EQ(SlideGeometry::fitImage(QSizeF(500, 1000), 250, 378), QSizeF(189, 378));
    EXPECT_EQ(SlideGeometry::fitImage(QSizeF(500, 1000), std::nullopt, 100), QSizeF(50, 100));
}

TEST(SlideGeometry, PageControl) {
    const PageControlLayout l = SlideGeometry::pageControl(QSizeF(1000, 500), QSizeF(30, 10));
    // Buttons 20 square, spacing 6, padding 10; counter 30 + 12 by 10 + 6.
    EXPECT_EQ(l.previous.size(), QSizeF(20, 20));
    EXPECT_EQ(l.counter.size(), QSizeF(42, 16));
    EXPECT_DOUBLE_EQ(l.background.width(), 20 + 6 + 42 + 6 + 20 + 20);
    EXPECT_DOUBLE_EQ(l.background.height(), 40);
    EXPECT_DOUBLE_EQ(l.background.bottom(), 500);
    EXPECT_DOUBLE_EQ(l.background.center().x(), 500);
    EXPECT_DOUBLE_EQ(l.next.left(), l.counter.right() + 6);
    EXPECT_DOUBLE_EQ(l.symbolSize, 8);
}

TEST(SlidesRenderer, PagingRules) {
    EXPECT_EQ(SlidesRenderer::pageAfter(SlidesRenderer::PageButton::previous, 0, 3), 0);
    EXPECT_EQ(SlidesRenderer::pageAfter(SlidesRenderer::PageButton::previous, 2, 3), 1);
    EXPECT_EQ(SlidesRenderer::pageAfter(SlidesRenderer::PageButton::next, 2, 3), 2);
    EXPECT_EQ(SlidesRenderer::pageAfter(SlidesRenderer::PageButton::next, 0, 3), 1);
    EXPECT_EQ(SlidesRenderer::pageAfter(SlidesRenderer::PageButton::none, 1, 3), 1);
}

TEST(SlidesRenderer, HitTestsTheButtons) {
    SlidesResource deck;
    deck.slides = {coloured(1, 0, 0), coloured(0, 1, 0)};
    const QSizeF view(960, 540);
    const PageControlLayout l = SlidesRenderer::pageControlLayout(view, 0, 2, nullptr);
    EXPECT_EQ(SlidesRenderer::hitTest(l.previous.center(), view, deck, 0, nullptr),
              SlidesRenderer::PageButton::previous);
    EXPECT_EQ(SlidesRenderer::hitTest(l.next.center(), view, deck, 0, nullptr), SlidesRenderer::PageButton::next);
    EXPECT_EQ(SlidesRenderer::hitTest(l.counter.center(), view, deck, 0, nullptr), SlidesRenderer::PageButton::none);
    EXPECT_EQ(SlidesRenderer::hitTest(QPointF(10, 10), view, deck, 0, nullptr), SlidesRenderer::PageButton::none);
    // The empty state has no page control.
    EXPECT_EQ(SlidesRenderer::hitTest(l.next.center(), view, deck, 7, nullptr), SlidesRenderer::PageButton::none);
}

TEST(SlidesRenderer, EmptyDeckShowsTheDeckColourAndText) {
    SlideImageLoader loader;
    SlidesResource deck;
    deck.backgroundColor = {0.2, 0.4, 0.6, 1};
    const QImage image = render(deck, 0, QSize(960, 540), loader);
    EXPECT_TRUE(near(image.pixelColor(10, 10), QColor(51, 102, 153)));
    EXPECT_GT(countNear(image, QRect(380, 260, 200, 40), Qt::white, 40), 10);  // "No slides available"
}

TEST(SlidesRenderer, OutOfRangeIndexIsTheEmptyStateWithoutControl) {
    SlideImageLoader loader;
    SlidesResource deck;
    deck.backgroundColor = {0.2, 0.4, 0.6, 1};
    deck.slides = {coloured(1, 0, 0), coloured(0, 1, 0), coloured(0, 0, 1)};
    const QImage image = render(deck, 7, QSize(960, 540), loader);
    EXPECT_TRUE(near(image.pixelColor(10, 10), QColor(51, 102, 153)));
    EXPECT_TRUE(near(image.pixelColor(480, 530), QColor(51, 102, 153)));  // no page control there
}

TEST(SlidesRenderer, SlideBackgroundAndPageControl) {
    SlideImageLoader loader;
    SlidesResource deck;
    deck.slides = {coloured(1, 1, 1), coloured(1, 1, 1)};
    const QSize size(960, 540);
    const QImage last = render(deck, 1, size, loader);
    EXPECT_TRUE(near(last.pixelColor(10, 10), Qt::white));
    const PageControlLayout l = SlidesRenderer::pageControlLayout(QSizeF(size), 1, 2, nullptr);
    // The control's black at 0.2 over white.
    EXPECT_TRUE(near(last.pixelColor(int(l.background.left()) + 2, int(l.background.center().y())), QColor(204, 204, 204)));
    // On the last page the next chevron is grey and faint, the previous one white.
    const auto brightest = [&](QRectF box) {
        int best = 0;
        for (int y = int(box.top()); y < int(box.bottom()); ++y)
            for (int x = int(box.left()); x < int(box.right()); ++x)
                best = std::max(best, 255 - last.pixelColor(x, y).lightness());
        return best;
    };
    // Both on a light ground: the active chevron is white (no darker than the
    // button), so compare how much each darkens or lightens its box.
    EXPECT_NE(brightest(l.previous), brightest(l.next));
}

TEST(SlidesRenderer, BackgroundImageAtThirtyPercentWhateverItsSize) {
    QTemporaryDir dir;
    const QString path = dir.filePath("bg.png");
    QImage picture(64, 36, QImage::Format_ARGB32);
    picture.fill(Qt::white);
    ASSERT_TRUE(picture.save(path));
    SlideImageLoader loader;
    SlidesResource deck;
    Slide slide = coloured(0, 0, 0);
    slide.imageUrl = path.toStdString();
    slide.imagePosition = ImagePosition::background;
    slide.imageSize = ImageSize::small;
    deck.slides = {slide};
    const QImage image = render(deck, 0, QSize(960, 540), loader);
    EXPECT_TRUE(near(image.pixelColor(5, 5), QColor(77, 77, 77)));
    EXPECT_TRUE(near(image.pixelColor(950, 300), QColor(77, 77, 77)));
}

TEST(SlidesRenderer, ImageOnTopIsPlacedAndSizedByTheUnit) {
    QTemporaryDir dir;
    const QString path = dir.filePath("pic.png");
    QImage picture(400, 200, QImage::Format_ARGB32);
    picture.fill(QColor(0, 255, 0));
    ASSERT_TRUE(picture.save(path));
    SlideImageLoader loader;
    SlidesResource deck;
    Slide slide = coloured(0, 0, 0);
    slide.imageUrl = path.toStdString();
    slide.imagePosition = ImagePosition::top;
    slide.imageSize = ImageSize::medium;
    deck.slides = {slide};
    // u = 0.5: at most 250 wide, so 250 by 125 from the padding (19.2, 19.2).
    const QImage image = render(deck, 0, QSize(960, 540), loader);
    EXPECT_TRUE(near(image.pixelColor(30, 30), QColor(0, 255, 0)));
    EXPECT_TRUE(near(image.pixelColor(260, 130), QColor(0, 255, 0)));
    EXPECT_FALSE(near(image.pixelColor(275, 80), QColor(0, 255, 0), 30));
    EXPECT_FALSE(near(image.pixelColor(100, 150), QColor(0, 255, 0), 30));
}

TEST(SlidesRenderer, ChangedFileShowsOnTheNextRedraw) {
    QTemporaryDir dir;
    const QString path = dir.filePath("pic.png");
    QImage picture(40, 40, QImage::Format_ARGB32);
    picture.fill(QColor(255, 0, 0));
    ASSERT_TRUE(picture.save(path));
    SlideImageLoader loader;
    EXPECT_TRUE(near(loader.load(path.toStdString()).image.pixelColor(5, 5), Qt::red));
    QImage bigger(41, 40, QImage::Format_ARGB32);  // another size, so the file's size changes
    bigger.fill(QColor(0, 0, 255));
    ASSERT_TRUE(bigger.save(path));
    EXPECT_TRUE(near(loader.load(path.toStdString()).image.pixelColor(5, 5), Qt::blue));
}

TEST(SlideImageLoader, NotAFileAndNoSchemeIsNothing) {
    SlideImageLoader loader;
    EXPECT_EQ(loader.load("photo.png").state, SlideImageLoader::State::none);
    EXPECT_EQ(loader.load("").state, SlideImageLoader::State::none);
}

}  // namespace
}  // namespace orvane
