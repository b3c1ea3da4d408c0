#include <gtest/gtest.h>

#include "composition/BrandingGeometry.h"
#include "composition/CameraMask.h"
#include "composition/ProgressBarGeometry.h"
#include "composition/SourceFrameGeometry.h"

namespace orvane {
namespace overlay_geometry_test {

TEST(CameraMask, StopsForTheSideLayouts) {
    EXPECT_EQ(CameraMask::stops(SceneLayout::splitHorizontal), (CameraMask::Stops{1, 1, 1, 1, 0.8, 0.5, 0.2, 0}));
    EXPECT_EQ(CameraMask::stops(SceneLayout::cameraLeft), (CameraMask::Stops{1, 1, 1, 1, 0.8, 0.5, 0.2, 0}));
    EXPECT_EQ(CameraMask::stops(SceneLayout::cameraRight), (CameraMask::Stops{0, 0.2, 0.5, 0.8, 1, 1, 1, 1}));
    EXPECT_FALSE(CameraMask::stops(SceneLayout::fullCamera));
    EXPECT_FALSE(CameraMask::stops(SceneLayout::pipTopRight));
}

TEST(CameraMask, AlphaBetweenStops) {
    EXPECT_DOUBLE_EQ(CameraMask::alphaAt(SceneLayout::cameraLeft, 4.0 / 7), 0.8);
    EXPECT_NEAR(CameraMask::alphaAt(SceneLayout::cameraLeft, 4.5 / 7), 0.65, 1e-12);
    EXPECT_DOUBLE_EQ(CameraMask::alphaAt(SceneLayout::cameraRight, 0), 0);
    EXPECT_DOUBLE_EQ(CameraMask::alphaAt(SceneLayout::cameraRight, 1), 1);
    EXPECT_DOUBLE_EQ(CameraMask::alphaAt(SceneLayout::fullCamera, 0.9), 1);
}

TEST(BrandingGeometry, ScalesFromTheShorterSide) {
    BrandingConfig b;
    b.textSize = 24;
    for (QSizeF canvas : {QSizeF(1600, 900), QSizeF(900, 1600)}) {
        const BrandingMetrics m = BrandingGeometry::metrics(b, canvas);
        EXPECT_DOUBLE_EQ(m.unit, 1.25);
        EXPECT_DOUBLE_EQ(m.textSize, 30);
        EXPECT_DOUBLE_EQ(m.margin, 13.5);
        EXPECT_DOUBLE_EQ(m.gap, 10.8);
        EXPECT_DOUBLE_EQ(m.padding, 10.8);
        EXPECT_DOUBLE_EQ(m.cornerRadius, 7.2);
        EXPECT_EQ(m.logoSize, QSizeF(100, 100));
    }
}

TEST(BrandingGeometry, NoBackgroundNoPadding) {
    BrandingConfig b;
    b.showBackground = false;
    EXPECT_DOUBLE_EQ(BrandingGeometry::metrics(b, QSizeF(1600, 900)).padding, 0);
}

TEST(BrandingGeometry, PlacesTheBoxInEachCorner) {
    BrandingConfig b;
    const QSizeF canvas(1600, 900);
    const BrandingMetrics m = BrandingGeometry::metrics(b, canvas);
    const QSizeF text(200, 30);
    // Box: 10.8 + 100 logo + 10.8 gap + 200 text + 10.8 = 332.4 wide, 100 + 21.6 high.
    const struct {
        BrandingPosition position;
        QPointF topLeft;
    } cases[] = {
        {BrandingPosition::topLeft, {13.5, 13.5}},
        {BrandingPosition::topRight, {1600 - 13.5 - 332.4, 13.5}},
        {BrandingPosition::bottomLeft, {13.5, 900 - 13.5 - 121.6}},
        {BrandingPosition::bottomRight, {1600 - 13.5 - 332.4, 900 - 13.5 - 121.6}},
    };
    for (const auto& c : cases) {
        const BrandingLayout l = BrandingGeometry::layout(m, c.position, canvas, true, text);
        EXPECT_NEAR(l.box.left(), c.topLeft.x(), 1e-9);
        EXPECT_NEAR(l.box.top(), c.topLeft.y(), 1e-9);
        EXPECT_NEAR(l.box.width(), 332.4, 1e-9);
        EXPECT_NEAR(l.box.height(), 121.6, 1e-9);
        EXPECT_NEAR(l.text.left() - l.logo.right(), m.gap, 1e-9);
        EXPECT_NEAR(l.text.center().y(), l.logo.center().y(), 1e-9);  // vertically centred
    }
}

TEST(BrandingGeometry, EmptyPlateWithBackgroundKeepsItsPadding) {
    BrandingConfig b;
    const BrandingMetrics m = BrandingGeometry::metrics(b, QSizeF(1600, 900));
    const BrandingLayout l = BrandingGeometry::layout(m, BrandingPosition::topLeft, QSizeF(1600, 900), false, {});
    EXPECT_EQ(l.box.size(), QSizeF(2 * m.padding, 2 * m.padding));
}

TEST(ProgressGeometry, HorizontalStripOnA1600By900Canvas) {
    ProgressBarConfig c;
    c.size = 60;
    c.textSize = 14;
    const ProgressStripMetrics m = ProgressBarGeometry::metrics(c, QSizeF(1600, 900));
    EXPECT_DOUBLE_EQ(m.thickness, 75);
    EXPECT_EQ(m.strip, QRectF(0, 825, 1600, 75));
    EXPECT_DOUBLE_EQ(m.markerDiameter, 22.5);
    EXPECT_NEAR(m.connector.width(), 27, 1e-12);
    EXPECT_NEAR(m.connector.height(), 2.7, 1e-12);
    EXPECT_NEAR(m.labelSize, 12.6, 1e-12);
    EXPECT_DOUBLE_EQ(m.paddingAlong, 24);
    EXPECT_DOUBLE_EQ(m.itemPadding, 16);
    EXPECT_DOUBLE_EQ(m.gap, 7.2);
    EXPECT_DOUBLE_EQ(m.checkSize, 11.25);
    EXPECT_NEAR(m.numberSize, 9.45, 1e-12);
}

TEST(ProgressGeometry, EdgesByOrientation) {
    ProgressBarConfig c;
    const QSizeF canvas(1280, 720);
    c.position = ProgressBarPosition::top;
    EXPECT_EQ(ProgressBarGeometry::metrics(c, canvas).strip.top(), 0);
    for (auto p : {ProgressBarPosition::left, ProgressBarPosition::right, ProgressBarPosition::bottom}) {
        c.position = p;
        EXPECT_EQ(ProgressBarGeometry::metrics(c, canvas).strip.bottom(), 720);  // all mean the bottom
    }
    c.orientation = ProgressBarOrientation::vertical;
    c.position = ProgressBarPosition::left;
    const ProgressStripMetrics left = ProgressBarGeometry::metrics(c, canvas);
    EXPECT_EQ(left.strip, QRectF(0, 0, 60, 720));  // 1280 * 60 / 1280
    for (auto p : {ProgressBarPosition::top, ProgressBarPosition::bottom, ProgressBarPosition::right}) {
        c.position = p;
        EXPECT_EQ(ProgressBarGeometry::metrics(c, canvas).strip, QRectF(1220, 0, 60, 720));
    }
}

TEST(ProgressGeometry, VerticalLabelWidthUsesTheUnscaledSize) {
    ProgressBarConfig c;
    c.orientation = ProgressBarOrientation::vertical;
    c.size = 120;
    const ProgressStripMetrics m = ProgressBarGeometry::metrics(c, QSizeF(1600, 900));
    EXPECT_DOUBLE_EQ(m.labelMaxWidth, 120 - 24);
    EXPECT_NEAR(m.connector.width(), 2.7, 1e-12);
    EXPECT_NEAR(m.connector.height(), 27, 1e-12);
    EXPECT_DOUBLE_EQ(m.itemPadding, 13.5);
}

TEST(ProgressGeometry, ItemsFollowEachOtherWithoutSpacing) {
    ProgressBarConfig c;
    const ProgressStripMetrics m = ProgressBarGeometry::metrics(c, QSizeF(1600, 900));
    const ProgressItemPlacement a = ProgressBarGeometry::placeItem(m, 24, QSizeF(50, 15), true);
    EXPECT_DOUBLE_EQ(a.marker.left(), 40);
    EXPECT_DOUBLE_EQ(a.marker.center().y(), 862.5);
    EXPECT_DOUBLE_EQ(a.label.left(), 40 + 22.5 + 7.2);
    EXPECT_DOUBLE_EQ(a.connector.left(), a.label.right() + 16);
    EXPECT_DOUBLE_EQ(a.next, a.connector.right());
    const ProgressItemPlacement last = ProgressBarGeometry::placeItem(m, a.next, QSizeF(50, 15), false);
    EXPECT_TRUE(last.connector.isNull());
    EXPECT_DOUBLE_EQ(last.marker.left(), a.next + 16);
}

TEST(SourceFrameGeometry, FitsAFullHdFrameIntoHalfAFullHdBox) {
    const QRectF r = SourceFrameGeometry::screenFrameRect(QSizeF(960, 540), QSizeF(1920, 1080), 1, 0, 0);
    EXPECT_EQ(r, QRectF(0, 0, 960, 540));
}

TEST(SourceFrameGeometry, OffsetsCountInA1920By1080Space) {
    const QRectF r = SourceFrameGeometry::screenFrameRect(QSizeF(960, 540), QSizeF(1920, 1080), 1, 192, -108);
    EXPECT_EQ(r.topLeft(), QPointF(96, -54));
}

TEST(SourceFrameGeometry, ScaleAndLetterbox) {
    const QRectF r = SourceFrameGeometry::screenFrameRect(QSizeF(1000, 1000), QSizeF(1600, 900), 0.8, 0, 0);
    EXPECT_DOUBLE_EQ(r.width(), 800);
    EXPECT_DOUBLE_EQ(r.height(), 450);
    EXPECT_EQ(r.center(), QPointF(500, 500));
    const QRectF big = SourceFrameGeometry::screenFrameRect(QSizeF(960, 540), QSizeF(1920, 1080), 2, 0, 0);
    EXPECT_EQ(big, QRectF(-480, -270, 1920, 1080));  // not clamped to the box
}

TEST(SourceFrameGeometry, EmptyFrameGivesNothing) {
    EXPECT_TRUE(SourceFrameGeometry::screenFrameRect(QSizeF(960, 540), QSizeF(0, 0), 1, 0, 0).isNull());
}

TEST(SourceFrameGeometry, CameraZoomRule) {
    EXPECT_EQ(SourceFrameGeometry::cameraZoomRect(QSizeF(100, 50), 1), QRectF(0, 0, 100, 50));
    EXPECT_EQ(SourceFrameGeometry::cameraZoomRect(QSizeF(100, 50), 2), QRectF(-50, -25, 200, 100));
}

TEST(SourceFrameGeometry, AspectFillCropsEqually) {
    EXPECT_EQ(SourceFrameGeometry::aspectFillSource(QSizeF(1920, 1080), QSizeF(100, 100)),
              QRectF(420, 0, 1080, 1080));
}

}  // namespace
}  // namespace orvane
