#include <gtest/gtest.h>

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "ChannelDifference.h"
#include "composition/FrameScaler.h"
#include "composition/TestFrameSource.h"

namespace orvane {
namespace frame_scaler_test {

// A frame with detail at every scale: smooth ramps in each channel, a grid
// of one-pixel lines and a diagonal, as the test frames have.
QImage detailedFrame(QSize size, QImage::Format format) {
    QImage image(size, format);
    for (int y = 0; y < size.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = qRgb(x * 255 / size.width(), y * 255 / size.height(), (x + y) % 256);
    }
    QPainter p(&image);
    p.setPen(QPen(Qt::white, 1));
    for (int x = 0; x < size.width(); x += 37) p.drawLine(x, 0, x, size.height());
    p.drawLine(0, 0, size.width(), size.height());
    return image;
}

// Per channel, over the pixels at least `margin` away from the edge of
// `area`: the edge pixels of a fractional rectangle are covered by the clip
// alone in one picture and by clip and fill in the other.
test::ChannelDifference compare(const QImage& a, const QImage& b, QRect area, int margin) {
    test::ChannelDifference d;
    const QRect inner = area.adjusted(margin, margin, -margin, -margin) & a.rect();
    for (int y = inner.top(); y <= inner.bottom(); ++y) {
        const auto* pa = reinterpret_cast<const quint32*>(a.constScanLine(y));
        const auto* pb = reinterpret_cast<const quint32*>(b.constScanLine(y));
        for (int x = inner.left(); x <= inner.right(); ++x) d.add(pa[x], pb[x]);
    }
    return d;
}

struct Case {
    const char* name;
    QSize canvas;
    QRectF target;
    QRectF source;  // null: the whole frame
    double zoom;    // about the canvas centre
    QImage::Format format;
};

class FrameScalerCases : public testing::TestWithParam<Case> {};

TEST_P(FrameScalerCases, MatchesSmoothDrawImage) {
    if (!FrameScaler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2; Qt draws the frames";
    const Case& c = GetParam();
    const QImage frame = detailedFrame(QSize(1280, 720), c.format);
    QPainterPath outline;
    outline.addRoundedRect(c.target, 12, 12);
    const auto render = [&](bool fast) {
        QImage canvas(c.canvas, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(QColor(30, 60, 90));
        QPainter p(&canvas);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        const QPointF centre(c.canvas.width() / 2.0, c.canvas.height() / 2.0);
        p.translate(centre);
        p.scale(c.zoom, c.zoom);
        p.translate(-centre);
        p.setClipPath(outline);
        FrameScaler scaler;
        if (fast)
            EXPECT_TRUE(scaler.draw(p, c.target, frame, c.source));
        else if (c.source.isNull())
            p.drawImage(c.target, frame);
        else
            p.drawImage(c.target, frame, c.source);
        return canvas;
    };
    const QImage expected = render(false);
    const QImage actual = render(true);
    const QPointF centre(c.canvas.width() / 2.0, c.canvas.height() / 2.0);
    const QRectF placed(centre + (c.target.topLeft() - centre) * c.zoom, c.target.size() * c.zoom);
    const test::ChannelDifference inside = compare(expected, actual, placed.toAlignedRect(), 14);
    // Six-bit weights against Qt's own rounding: a few levels on the finest
    // lines at most, next to nothing on average.
    EXPECT_LE(inside.worst(), 16) << c.name;
    EXPECT_LT(inside.mean(), 0.6) << c.name;
    // Outside the frame nothing is touched.
    const test::ChannelDifference outside = compare(expected, actual, QRect(0, 0, c.canvas.width(), 2), 0);
    if (placed.top() > 3) {
        EXPECT_EQ(outside.worst(), 0) << c.name;
    }
}

INSTANTIATE_TEST_SUITE_P(
    FrameScaler, FrameScalerCases,
    testing::Values(
        Case{"downscale on whole pixels", {960, 540}, {96, 54, 768, 432}, {}, 1.0, QImage::Format_RGB32},
        Case{"premultiplied frame", {960, 540}, {96, 54, 768, 432}, {}, 1.0, QImage::Format_ARGB32_Premultiplied},
        Case{"fractional placement", {960, 540}, {100.3, 50.7, 700.4, 401.1}, {}, 1.0, QImage::Format_RGB32},
        Case{"upscale", {1920, 1080}, {-20.5, 10.25, 1960, 1100}, {}, 1.0, QImage::Format_RGB32},
        Case{"cropped source", {960, 540}, {600, 300, 300, 220}, {180, 0, 960, 720}, 1.0, QImage::Format_RGB32},
        Case{"under zoom", {960, 540}, {96, 54, 768, 432}, {}, 1.07, QImage::Format_RGB32},
        // Steeper than a half: each pixel's neighbours are fetched one by one.
        Case{"steep downscale", {960, 540}, {400, 200, 290, 163}, {}, 1.0, QImage::Format_RGB32},
        // The source's right and bottom edges, where reading eight pixels
        // at a time would run past the row.
        Case{"source at the frame edges", {960, 540}, {300, 150, 412.6, 341.3}, {1013.5, 380.2, 266.5, 339.8}, 1.0,
             QImage::Format_ARGB32_Premultiplied}),
    [](const testing::TestParamInfo<Case>& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST(FrameScaler, HighDensityCanvas) {
    if (!FrameScaler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2";
    // Points are two device pixels: the frame is resampled to the pixels.
    const QImage frame = detailedFrame(QSize(1280, 720), QImage::Format_RGB32);
    const QRectF target(40, 30, 400, 200);
    const auto render = [&](bool fast) {
        QImage canvas(960, 540, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(2);
        canvas.fill(Qt::black);
        QPainter p(&canvas);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        FrameScaler scaler;
        if (fast)
            EXPECT_TRUE(scaler.draw(p, target, frame));
        else
            p.drawImage(target, frame);
        return canvas;
    };
    const QImage expected = render(false);
    const QImage actual = render(true);
    const test::ChannelDifference inside = compare(expected, actual, QRect(80, 60, 800, 400), 2);
    EXPECT_LE(inside.worst(), 16);
    EXPECT_LT(inside.mean(), 0.6);
    EXPECT_EQ(compare(expected, actual, QRect(0, 0, 960, 50), 0).worst(), 0);
}

TEST(FrameScaler, LeavesWhatItCannotTakeToTheCaller) {
    QImage canvas(200, 100, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::black);
    const QImage before = canvas;
    FrameScaler scaler;
    QPainter p(&canvas);
    // A format it does not read, a turned painter, a frame too small to
    // interpolate: nothing drawn, false returned.
    EXPECT_FALSE(scaler.draw(p, QRectF(0, 0, 100, 50), QImage(64, 64, QImage::Format_RGB888)));
    EXPECT_FALSE(scaler.draw(p, QRectF(0, 0, 100, 50), QImage(1, 64, QImage::Format_RGB32)));
    EXPECT_FALSE(scaler.draw(p, QRectF(0, 0, 100, 50), QImage()));
    p.rotate(10);
    EXPECT_FALSE(scaler.draw(p, QRectF(0, 0, 100, 50), QImage(64, 64, QImage::Format_RGB32)));
    p.end();
    EXPECT_EQ(canvas, before);
}

TEST(FrameScaler, EachNewFrameShows) {
    if (!FrameScaler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2";
    // One scaler, frames of different colours in turn: nothing of the last
    // frame is kept.
    FrameScaler scaler;
    QImage canvas(320, 180, QImage::Format_ARGB32_Premultiplied);
    for (QColor colour : {QColor(200, 30, 30), QColor(30, 200, 30), QColor(30, 30, 200)}) {
        QImage frame(640, 360, QImage::Format_RGB32);
        frame.fill(colour);
        canvas.fill(Qt::black);
        QPainter p(&canvas);
        ASSERT_TRUE(scaler.draw(p, QRectF(10, 10, 300, 160), frame));
        p.end();
        EXPECT_EQ(canvas.pixelColor(160, 90), colour);
        EXPECT_EQ(canvas.pixelColor(5, 5), QColor(Qt::black));
    }
}

}  // namespace
}  // namespace orvane
