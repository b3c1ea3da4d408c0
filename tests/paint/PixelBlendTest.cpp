#include <gtest/gtest.h>

#include <QPainter>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

#include "ChannelDifference.h"
#include "paint/ImageBands.h"
#include "paint/PixelBlend.h"

namespace orvane {
namespace pixel_blend_test {

// Premultiplied pixels of every kind: opaque, clear, and translucent,
// in runs and mixed, so that both the vector and the scalar paths run.
std::vector<std::uint32_t> mixedPixels(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const int kind = (i / 16) % 4;
        const int alpha = kind == 0 ? 255 : kind == 1 ? 0 : static_cast<int>(random() % 256);
        const QRgb c = qRgba(int(random() % 256), int(random() % 256), int(random() % 256), alpha);
        pixels[static_cast<std::size_t>(i)] = qPremultiply(c);
    }
    return pixels;
}

TEST(PixelBlend, SourceOverMatchesThePixelRuleAndQt) {
    const int count = 1003;  // not a multiple of the vector width
    const std::vector<std::uint32_t> src = mixedPixels(count, 1);
    const std::vector<std::uint32_t> under = mixedPixels(count, 2);
    std::vector<std::uint32_t> out = under;
    PixelBlend::sourceOver(src.data(), out.data(), count);

    QImage qtSource(count, 1, QImage::Format_ARGB32_Premultiplied);
    QImage qtOut(count, 1, QImage::Format_ARGB32_Premultiplied);
    std::copy(src.begin(), src.end(), reinterpret_cast<std::uint32_t*>(qtSource.bits()));
    std::copy(under.begin(), under.end(), reinterpret_cast<std::uint32_t*>(qtOut.bits()));
    {
        QPainter p(&qtOut);
        p.drawImage(0, 0, qtSource);
    }
    const auto* qt = reinterpret_cast<const std::uint32_t*>(qtOut.constBits());
    for (int i = 0; i < count; ++i) {
        const std::size_t k = static_cast<std::size_t>(i);
        // Vector and scalar agree to the bit.
        EXPECT_EQ(out[k], PixelBlend::over(src[k], under[k])) << i;
        // Qt rounds a little differently.
        EXPECT_LE(test::ChannelDifference::worstOf(out[k], qt[k]), 1) << i;
    }
}

TEST(PixelBlend, OpaqueCopySetsAlpha) {
    std::vector<std::uint32_t> src = {0x00112233u, 0x7f445566u, 0xff778899u, 0x00000000u, 0x12abcdefu,
                                      0x00010203u, 0x00040506u, 0x00070809u, 0x000a0b0cu, 0x000d0e0fu};
    std::vector<std::uint32_t> dst(src.size(), 0u);
    PixelBlend::copyOpaque(src.data(), dst.data(), static_cast<int>(src.size()));
    for (std::size_t i = 0; i < src.size(); ++i) EXPECT_EQ(dst[i], src[i] | 0xff000000u);
}

TEST(PixelBlend, CoverageScalesEveryChannel) {
    EXPECT_EQ(PixelBlend::scaledBy(0xffffffffu, 255), 0xffffffffu);
    EXPECT_EQ(PixelBlend::scaledBy(0xffffffffu, 0), 0u);
    EXPECT_EQ(PixelBlend::scaledBy(0xff804020u, 128), 0x80402010u);
}

// drawImageInBands against one drawImage, for the images it writes itself
// and for those it leaves to Qt.
struct BandCase {
    const char* name;
    QImage::Format format;
    QPointF at;
    bool clip;
};

class ImageBandCases : public testing::TestWithParam<BandCase> {};

// Ramps in every channel, and for a translucent image an alpha that varies
// from pixel to pixel.
QImage bandImage(QImage::Format format) {
    QImage image(300, 200, format);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<std::uint32_t*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = format == QImage::Format_RGB32 ? qRgb(x % 256, y % 256, (x + y) % 256)
                                                     : qPremultiply(qRgba(x % 256, y % 256, 90, (x * 3 + y) % 256));
    }
    return image;
}

TEST_P(ImageBandCases, DrawsAsDrawImageDoes) {
    const BandCase& c = GetParam();
    const QImage image = bandImage(c.format);
    const QRect source(10, 5, 260, 180);
    const auto render = [&](bool bands) {
        QImage canvas(400, 300, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(QColor(20, 120, 60));
        QPainter p(&canvas);
        if (c.clip) p.setClipRect(QRect(50, 40, 200, 150));
        if (bands)
            drawImageInBands(p, c.at, image, source);
        else
            p.drawImage(c.at, image, QRectF(source));
        return canvas;
    };
    const QImage expected = render(false);
    const QImage actual = render(true);
    test::ChannelDifference d;
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < expected.width(); ++x) d.add(expected.pixel(x, y), actual.pixel(x, y));
    EXPECT_LE(d.worst(), 1) << c.name;
}

// drawImageAround: as one drawImage, except that the pixels under the hole
// keep what was there.
TEST_P(ImageBandCases, LeavesTheHoleAsItWas) {
    const BandCase& c = GetParam();
    // Between pixels, the pixels along the hole's edge belong to neither
    // side: those are left out of the comparison.
    const bool onGrid = c.at.x() == std::floor(c.at.x()) && c.at.y() == std::floor(c.at.y());
    const QImage image = bandImage(c.format);
    const QRect source(10, 5, 260, 180);
    // In the middle, along the left edge, and reaching past the source.
    for (const QRect hole : {QRect(60, 40, 150, 100), QRect(0, 30, 120, 60), QRect(200, 100, 200, 200)}) {
        QImage background(400, 300, QImage::Format_ARGB32_Premultiplied);
        background.fill(QColor(20, 120, 60));
        const auto render = [&](bool around) {
            QImage canvas = background.copy();
            QPainter p(&canvas);
            if (c.clip) p.setClipRect(QRect(50, 40, 200, 150));
            if (around)
                drawImageAround(p, c.at, image, source, hole);
            else
                p.drawImage(c.at, image, QRectF(source));
            return canvas;
        };
        QImage expected = render(false);
        const QPoint at(static_cast<int>(std::floor(c.at.x())), static_cast<int>(std::floor(c.at.y())));
        const QRect underHole = (hole & source).translated(at - source.topLeft());
        const QRect edge = onGrid ? QRect() : underHole.adjusted(-1, -1, 1, 1);
        for (int y = 0; y < expected.height(); ++y)
            for (int x = 0; x < expected.width(); ++x)
                if (underHole.contains(x, y)) expected.setPixel(x, y, background.pixel(x, y));
        const QImage actual = render(true);
        test::ChannelDifference d;
        for (int y = 0; y < expected.height(); ++y)
            for (int x = 0; x < expected.width(); ++x)
                if (!edge.contains(x, y) || underHole.adjusted(1, 1, -1, -1).contains(x, y))
                    d.add(expected.pixel(x, y), actual.pixel(x, y));
        EXPECT_LE(d.worst(), 1) << c.name << ", hole at " << hole.x() << ", " << hole.y();
    }
}

INSTANTIATE_TEST_SUITE_P(
    ImageBands, ImageBandCases,
    testing::Values(BandCase{"opaque", QImage::Format_RGB32, {20, 30}, false},
                    BandCase{"translucent", QImage::Format_ARGB32_Premultiplied, {20, 30}, false},
                    BandCase{"past the top left", QImage::Format_ARGB32_Premultiplied, {-40, -25}, false},
                    BandCase{"past the bottom right", QImage::Format_RGB32, {250, 200}, false},
                    BandCase{"within a clip", QImage::Format_ARGB32_Premultiplied, {20, 30}, true},
                    BandCase{"between pixels", QImage::Format_ARGB32_Premultiplied, {20.5, 30.25}, true}),
    [](const testing::TestParamInfo<BandCase>& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

}  // namespace
}  // namespace orvane
