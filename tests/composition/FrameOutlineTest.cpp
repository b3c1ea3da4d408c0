#include <gtest/gtest.h>

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <cctype>
#include <cstdlib>
#include <functional>

#include "ChannelDifference.h"
#include "composition/FrameScaler.h"

namespace orvane {
namespace frame_outline_test {

// Ramps in each channel with a one-pixel grid, as in the scaler's own tests;
// with `alpha` below 255 every pixel is premultiplied to it.
QImage frameWithDetail(QSize size, QImage::Format format, int alpha = 255) {
    QImage image(size, format);
    for (int y = 0; y < size.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const QRgb c = qRgba(x * 255 / size.width(), y * 255 / size.height(), (x * 7 + y) % 256, alpha);
            line[x] = format == QImage::Format_ARGB32_Premultiplied ? qPremultiply(c) : c;
        }
        if (y % 31 == 0) std::fill(line, line + size.width(), format == QImage::Format_RGB32 ? 0xffffffffu : qPremultiply(qRgba(255, 255, 255, alpha)));
    }
    return image;
}

// Per channel over the pixels whose distance from the outline's edge is at
// least `margin` (inside or out) when `edges` is false, or less than
// `margin` when it is true.
test::ChannelDifference compare(const QImage& a, const QImage& b, const QPainterPath& outline, double margin,
                                bool edges) {
    test::ChannelDifference d;
    QPainterPathStroker stroker;
    stroker.setWidth(2 * margin);
    const QPainterPath band = stroker.createStroke(outline);
    for (int y = 0; y < a.height(); ++y) {
        const auto* pa = reinterpret_cast<const quint32*>(a.constScanLine(y));
        const auto* pb = reinterpret_cast<const quint32*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            if (band.contains(QPointF(x + 0.5, y + 0.5)) == edges) d.add(pa[x], pb[x]);
    }
    return d;
}

struct Case {
    const char* name;
    QRectF target;
    QRectF cut;
    double radius;
    double zoom;
    QImage::Format format;
    int alpha;
    double pixelRatio;
};

// The frame drawn by the scaler within its outline against Qt's smooth
// drawImage under a clip path of the same shape, away from the edge; on the
// edge, a plain white frame against Qt filling the outline in white, which
// shows the coverage of each edge pixel alone. (Qt's own drawImage under a
// clip path smooths a fractional edge twice, once for the image's rectangle
// and once for the clip, and so is no reference there.)
class FrameOutlineCases : public testing::TestWithParam<Case> {
protected:
    enum class Way { scaler, drawImage, fillPath };

    static QImage render(const Case& c, Way way, bool white) {
        QImage frame = white ? QImage(QSize(1280, 720), c.format) : frameWithDetail(QSize(1280, 720), c.format, c.alpha);
        if (white) frame.fill(Qt::white);
        QImage canvas(QSize(960, 540) * c.pixelRatio, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(c.pixelRatio);
        canvas.fill(white ? QColor(Qt::black) : QColor(30, 60, 90));
        QPainter p(&canvas);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.setClipRect(QRectF(0, 0, 960, 540));
        const QPointF centre(480, 270);
        p.translate(centre);
        p.scale(c.zoom, c.zoom);
        p.translate(-centre);
        QPainterPath path;
        path.addRoundedRect(c.cut, c.radius, c.radius);
        switch (way) {
        case Way::scaler:
            FrameScaler().drawWithin(p, {c.cut, c.radius}, c.target, frame);
            break;
        case Way::drawImage:
            p.setClipPath(path, Qt::IntersectClip);
            p.drawImage(c.target, frame);
            break;
        case Way::fillPath:
            // Every case's outline lies within its frame.
            p.fillPath(path, Qt::white);
            break;
        }
        return canvas;
    }

    // The outline in device pixels.
    static QPainterPath deviceOutline(const Case& c) {
        QPainterPath outline;
        outline.addRoundedRect(c.cut, c.radius, c.radius);
        QTransform toDevice;
        toDevice.scale(c.pixelRatio, c.pixelRatio);
        toDevice.translate(480, 270);
        toDevice.scale(c.zoom, c.zoom);
        toDevice.translate(-480, -270);
        return toDevice.map(outline);
    }
};

TEST_P(FrameOutlineCases, MatchesDrawImageUnderAClipPath) {
    if (!FrameScaler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2; Qt draws the frames";
    const Case& c = GetParam();
    const QPainterPath outline = deviceOutline(c);
    // Away from the edge: the scaler's six-bit weights against Qt's.
    const test::ChannelDifference inside =
        compare(render(c, Way::drawImage, false), render(c, Way::scaler, false), outline, 2, false);
    EXPECT_LE(inside.worst(), 16) << c.name;
    EXPECT_LT(inside.mean(), 0.6) << c.name;
    // On the edge: two smoothings of the same curve.
    const test::ChannelDifference edge =
        compare(render(c, Way::fillPath, true), render(c, Way::scaler, true), outline, 2, true);
    EXPECT_LE(edge.worst(), 40) << c.name;
    EXPECT_LT(edge.mean(), 1.0) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    FrameScaler, FrameOutlineCases,
    testing::Values(
        Case{"rounded corners", {96, 54, 768, 432}, {96, 54, 768, 432}, 12, 1, QImage::Format_RGB32, 255, 1},
        Case{"fractional rounded", {100.3, 50.7, 700.4, 401.1}, {100.3, 50.7, 700.4, 401.1}, 24.5, 1,
             QImage::Format_RGB32, 255, 1},
        Case{"square corners", {100.3, 50.7, 700.4, 401.1}, {100.3, 50.7, 700.4, 401.1}, 0, 1, QImage::Format_RGB32,
             255, 1},
        Case{"circle", {500, 200, 400, 300}, {560.25, 210.5, 280, 280}, 140, 1, QImage::Format_RGB32, 255, 1},
        Case{"outline smaller than the frame", {40, 20, 880, 500}, {200, 100, 300, 200}, 30, 1,
             QImage::Format_ARGB32_Premultiplied, 255, 1},
        Case{"translucent frame", {96, 54, 768, 432}, {96, 54, 768, 432}, 12, 1, QImage::Format_ARGB32_Premultiplied,
             140, 1},
        Case{"under zoom", {96, 54, 768, 432}, {96, 54, 768, 432}, 12, 1.07, QImage::Format_RGB32, 255, 1},
        Case{"high density", {96, 54, 768, 432}, {96, 54, 768, 432}, 12, 1, QImage::Format_RGB32, 255, 2},
        Case{"reaching past the canvas", {-50, 300, 700, 400}, {-50, 300, 700, 400}, 40, 1, QImage::Format_RGB32, 255,
             1}),
    [](const testing::TestParamInfo<Case>& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });


// Drawn with the painter in a state the scaler does not blend into directly:
// the picture is Qt's, drawn under a clip path of the outline, still cut to it.
struct Unplain {
    const char* name;
    std::function<void(QPainter&)> set;
};

class FrameOutlineFallbacks : public testing::TestWithParam<Unplain> {};

TEST_P(FrameOutlineFallbacks, StillCutToTheOutline) {
    const Unplain& u = GetParam();
    const QImage frame = frameWithDetail(QSize(640, 360), QImage::Format_RGB32);
    const QRectF target(100, 60, 500, 300);
    const QRectF cut(120, 80, 400, 240);
    const auto render = [&](bool scaler) {
        QImage canvas(720, 420, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(QColor(30, 60, 90));
        QPainter p(&canvas);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        u.set(p);
        if (scaler) {
            FrameScaler().drawWithin(p, {cut, 20}, target, frame);
        } else {
            QPainterPath path;
            path.addRoundedRect(cut, 20, 20);
            p.setClipPath(path, Qt::IntersectClip);
            p.drawImage(target, frame);
        }
        return canvas;
    };
    QPainterPath outline;
    outline.addRoundedRect(cut, 20, 20);
    const QImage expected = render(false);
    const QImage actual = render(true);
    const test::ChannelDifference inside = compare(expected, actual, outline, 2, false);
    EXPECT_LE(inside.worst(), 16) << u.name;
    EXPECT_LT(inside.mean(), 0.6) << u.name;
    // Cut as Qt cuts it: the very same edge.
    const test::ChannelDifference edge = compare(expected, actual, outline, 2, true);
    EXPECT_LE(edge.worst(), 16) << u.name;
}

INSTANTIATE_TEST_SUITE_P(
    FrameScaler, FrameOutlineFallbacks,
    testing::Values(Unplain{"half opacity", [](QPainter& p) { p.setOpacity(0.5); }},
                    Unplain{"a clip path of the caller's",
                            [](QPainter& p) {
                                QPainterPath ellipse;
                                ellipse.addEllipse(QRectF(60, 20, 600, 380));
                                p.setClipPath(ellipse);
                            }},
                    Unplain{"another composition mode",
                            [](QPainter& p) { p.setCompositionMode(QPainter::CompositionMode_Multiply); }},
                    Unplain{"a turned painter",
                            [](QPainter& p) {
                                p.translate(360, 210);
                                p.rotate(0.5);
                                p.translate(-360, -210);
                            }}),
    [](const testing::TestParamInfo<Unplain>& info) {
        std::string name = info.param.name;
        std::replace_if(name.begin(), name.end(), [](char ch) { return !std::isalnum(static_cast<unsigned char>(ch)); }, '_');
        return name;
    });

TEST(FrameOutline, WritesNothingOutsideTheOutlineOrTheClip) {
    if (!FrameScaler::isAvailable()) GTEST_SKIP() << "this processor has no AVX2";
    const QImage frame = frameWithDetail(QSize(640, 360), QImage::Format_RGB32);
    QImage canvas(720, 420, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(QColor(30, 60, 90));
    const QImage before = canvas;
    const QRectF cut(100.5, 50.5, 500, 300);
    const QRect clip(90, 0, 300, 420);
    {
        QPainter p(&canvas);
        p.setRenderHint(QPainter::Antialiasing);
        p.setClipRect(clip);
        FrameScaler().drawWithin(p, {cut, 40}, QRectF(0, 0, 720, 420), frame);
    }
    QPainterPath outline;
    outline.addRoundedRect(cut, 40, 40);
    int written = 0;
    for (int y = 0; y < canvas.height(); ++y)
        for (int x = 0; x < canvas.width(); ++x) {
            const bool touched = canvas.pixel(x, y) != before.pixel(x, y);
            const QRectF pixel(x, y, 1, 1);
            if (!clip.contains(x, y) || !outline.intersects(pixel)) {
                ASSERT_FALSE(touched) << x << "," << y;
            } else if (touched) {
                ++written;
            }
        }
    // And within both, all of it.
    EXPECT_GT(written, 290 * 290);
    // The corner within the clip is cut: its pixel at the very corner is the
    // background's.
    EXPECT_EQ(canvas.pixel(101, 51), before.pixel(101, 51));
    EXPECT_NE(canvas.pixel(140, 90), before.pixel(140, 90));
}

}  // namespace
}  // namespace orvane
