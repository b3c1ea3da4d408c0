#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include "paint/PixelFont.h"
#include "slides/MarkdownContentView.h"
#include "slides/MarkdownRenderer.h"
#include "slides/MarkdownTextView.h"
#include "slides/SlideImageLoader.h"
#include "slides/SlidesRenderer.h"

namespace orvane {
namespace markdown_render_test {

const QColor kAccent(200, 40, 220);

// The bounding box of the pixels of one colour.
QRect extent(const QImage& image, QColor colour, int tolerance = 60) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (std::abs(c.red() - colour.red()) + std::abs(c.green() - colour.green()) +
                    std::abs(c.blue() - colour.blue()) < tolerance)
                box = box.united(QRect(x, y, 1, 1));
        }
    return box;
}

QImage renderColumn(const QString& markdown, const MarkdownStyle& style, TextAlignment alignment, bool stage,
                    double* height = nullptr, QSize size = QSize(960, 540)) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter p(&image);
    const auto elements = stage ? MarkdownContentView::parseMarkdown(markdown) : MarkdownTextView::parseMarkdown(markdown);
    const double h = MarkdownRenderer::render(&p, &image, QRectF(QPointF(0, 0), QSizeF(size)), elements, style,
                                              {Qt::white, kAccent}, alignment,
                                              stage ? &MarkdownContentView::processInlineMarkdown
                                                    : &MarkdownTextView::processInlineMarkdown);
    if (height) *height = h;
    return image;
}

TEST(MarkdownRender, HeadingInAccentAtItsSize) {
    const MarkdownStyle st = MarkdownStyle::stage(QSizeF(960, 540), 1);
    const QImage image = renderColumn("# HHHH", st, TextAlignment::leading, true);
    const QRect h = extent(image, kAccent);
    ASSERT_FALSE(h.isNull());
    // A 38.4 point capital stands about 0.7 of the size high.
    EXPECT_NEAR(h.height(), 38.4 * 0.72, 5);
    EXPECT_LT(h.left(), 8);
}

TEST(MarkdownRender, AlignmentMovesTheText) {
    const MarkdownStyle st = MarkdownStyle::stage(QSizeF(960, 540), 1);
    const QRect leading = extent(renderColumn("# Title", st, TextAlignment::leading, true), kAccent);
    const QRect centre = extent(renderColumn("# Title", st, TextAlignment::center, true), kAccent);
    const QRect trailing = extent(renderColumn("# Title", st, TextAlignment::trailing, true), kAccent);
    EXPECT_LT(leading.left(), 8);
    EXPECT_NEAR(centre.center().x(), 480, 6);
    EXPECT_GT(trailing.right(), 950);
}

TEST(MarkdownRender, BulletMarkerInAccentBeforeTheText) {
    const MarkdownStyle st = MarkdownStyle::stage(QSizeF(960, 540), 1);
    for (TextAlignment a : {TextAlignment::leading, TextAlignment::center, TextAlignment::trailing}) {
        const QImage image = renderColumn("1. item", st, a, true);
        const QRect marker = extent(image, kAccent);
        const QRect text = extent(image, Qt::white);
        ASSERT_FALSE(marker.isNull());
        EXPECT_LT(marker.right(), text.left()) << toString(a);
    }
}

// A text drawn on its own in a font, measured the same way as a column.
QRect referenceExtent(const QString& text, double size, QFont::Weight weight, QColor colour) {
    QImage image(400, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    {
        QPainter p(&image);
        p.setFont(PixelFont::system(size, weight, &image));
        p.setPen(colour);
        p.drawText(QPointF(50, 120), text);
    }
    return extent(image, colour);
}

TEST(MarkdownRender, TwelveDotShowsAsABulletMarkerAndTheTextAlone) {
    const MarkdownStyle st = MarkdownStyle::stage(QSizeF(960, 540), 1);
    const QImage numbered = renderColumn("12. x", st, TextAlignment::leading, true);
    const QRect marker = extent(numbered, kAccent);
    const QRect text = extent(numbered, Qt::white);
    ASSERT_FALSE(marker.isNull());
    ASSERT_FALSE(text.isNull());
    // The accent mark is the bullet "•" at 24 f, bold: its size, not that
    // of the number.
    const QRect bullet = referenceExtent(QStringLiteral("\u2022"), st.font(st.bulletMarker), QFont::Bold, kAccent);
    const QRect twelve = referenceExtent(QStringLiteral("12."), st.font(st.bulletMarker), QFont::Bold, kAccent);
    ASSERT_FALSE(bullet.isNull());
    EXPECT_NEAR(marker.width(), bullet.width(), 1);
    EXPECT_NEAR(marker.height(), bullet.height(), 1);
    EXPECT_GT(twelve.width(), bullet.width() + 5);  // the number would have shown wider
    // The white text is "x" in the 20 f text font, with no "12." before it.
    const QRect x = referenceExtent(QStringLiteral("x"), st.font(st.bulletText), QFont::Normal, Qt::white);
    const QRect withNumber = referenceExtent(QStringLiteral("12. x"), st.font(st.bulletText), QFont::Normal, Qt::white);
    EXPECT_NEAR(text.width(), x.width(), 1);
    EXPECT_NEAR(text.height(), x.height(), 1);
    EXPECT_GT(withNumber.width(), x.width() + 10);
    EXPECT_LT(marker.right(), text.left());
    // Exactly what the bullet item "- x" shows.
    const QImage bulleted = renderColumn("- x", st, TextAlignment::leading, true);
    EXPECT_EQ(extent(bulleted, kAccent), marker);
    EXPECT_EQ(extent(bulleted, Qt::white), text);
}

TEST(MarkdownRender, HeadingNeverSmallerOnSmallCanvases) {
    // Below 960 by 540 the font factor stays at 0.8: an h1 is 38.4 points.
    for (QSize size : {QSize(960, 540), QSize(480, 270), QSize(192, 108)}) {
        const MarkdownStyle st = MarkdownStyle::stage(QSizeF(size), 1);
        EXPECT_NEAR(st.font(st.h1), 38.4, 1e-12) << size.width();
    }
    const QRect large = extent(renderColumn("# HH", MarkdownStyle::stage(QSizeF(960, 540), 1),
                                            TextAlignment::leading, true),
                               kAccent);
    const QRect small = extent(renderColumn("# HH", MarkdownStyle::stage(QSizeF(480, 270), 1),
                                            TextAlignment::leading, true, nullptr, QSize(480, 270)),
                               kAccent);
    ASSERT_FALSE(small.isNull());
    EXPECT_EQ(small.height(), large.height());
    EXPECT_EQ(small.width(), large.width());
    EXPECT_NEAR(small.height(), 38.4 * 0.72, 5);
    // Larger canvases do grow it: 1920 by 1080 gives 48.
    const QRect full = extent(renderColumn("# HH", MarkdownStyle::stage(QSizeF(1920, 1080), 1),
                                           TextAlignment::leading, true, nullptr, QSize(1920, 1080)),
                              kAccent);
    EXPECT_NEAR(double(full.height()) / large.height(), 48 / 38.4, 0.08);
}

TEST(MarkdownRender, TextScaleAndTheStageFloor) {
    double small = 0;
    double scaled = 0;
    renderColumn("# A\n## B\ntext", MarkdownStyle::stage(QSizeF(480, 270), 1), TextAlignment::leading, true, &small);
    renderColumn("# A\n## B\ntext", MarkdownStyle::stage(QSizeF(480, 270), 2), TextAlignment::leading, true, &scaled);
    EXPECT_GT(scaled, 1.7 * small);
}

TEST(MarkdownRender, PreviewShowsFencesAsText) {
    const MarkdownStyle st = MarkdownStyle::preview(QSizeF(400, 300), 1);
    double height = 0;
    const QImage image = renderColumn("```\nx\n```", st, TextAlignment::leading, false, &height);
    // Three paragraph lines, no dark code box.
    EXPECT_GT(height, 3 * 14 * 0.9);
    EXPECT_FALSE(extent(image, Qt::white).isNull());
}

TEST(SlideImage, FailedAddressShowsFailedToLoad) {
    SlideImageLoader loader;
    SlidesResource deck;
    Slide slide;
    slide.content.clear();
    slide.backgroundColor = {0, 0, 0, 1};
    slide.imageUrl = "http://127.0.0.1:1/x.png";
    deck.slides = {slide};
    QElapsedTimer timer;
    timer.start();
    while (loader.load(*slide.imageUrl).state != SlideImageLoader::State::failed && timer.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QImage image(960, 540, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    {
        QPainter p(&image);
        SlidesRenderer(loader).paint(p, QRectF(0, 0, 960, 540), deck, 0);
    }
    // The grey symbol and text where the picture would be, at the top left.
    const QRect grey = extent(image.copy(0, 0, 400, 200), QColor(142, 142, 147), 40);
    EXPECT_FALSE(grey.isNull());
}

}  // namespace
}  // namespace orvane

namespace orvane {
namespace markdown_render_test {

TEST(MarkdownRender, CodeBlockKeepsItsLines) {
    const MarkdownStyle st = MarkdownStyle::stage(QSizeF(960, 540), 1);
    double one = 0;
    double three = 0;
    renderColumn("```\na\n```", st, TextAlignment::leading, true, &one);
    renderColumn("```\na\nb\nc\n```", st, TextAlignment::leading, true, &three);
    // Two more lines of a 16 * 0.8 point font.
    EXPECT_GT(three - one, 2 * 12.8);
}

}  // namespace
}  // namespace orvane
