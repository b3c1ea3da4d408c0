#include <gtest/gtest.h>

#include "composition/DrawingOverlay.h"
#include "composition/EraserHitTest.h"

namespace orvane {
namespace drawing_overlay_test {

DrawingShape shape(DrawingShapeType type, Point a, Point b) {
    DrawingShape s;
    s.type = type;
    s.startPoint = a;
    s.endPoint = b;
    return s;
}

struct HitCase {
    const char* name;
    DrawingShape shape;
    Point p;
    bool hit;
};

class EraserShapes : public ::testing::TestWithParam<HitCase> {};

TEST_P(EraserShapes, HitsOnlyNearTheOutline) {
    const HitCase& c = GetParam();
    EXPECT_EQ(EraserHitTest::hitsShape(c.shape, c.p), c.hit) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    Table, EraserShapes,
    ::testing::Values(
        HitCase{"line near its middle", shape(DrawingShapeType::line, {0, 0}, {100, 0}), {50, 20}, true},
        HitCase{"line just out of reach", shape(DrawingShapeType::line, {0, 0}, {100, 0}), {50, 20.01}, false},
        HitCase{"line beyond its end is clamped", shape(DrawingShapeType::line, {0, 0}, {100, 0}), {115, 12}, true},
        HitCase{"line far past its end", shape(DrawingShapeType::line, {0, 0}, {100, 0}), {125, 0}, false},
        HitCase{"zero-length line never", shape(DrawingShapeType::line, {5, 5}, {5, 5}), {5, 5}, false},
        HitCase{"zero-length arrow never", shape(DrawingShapeType::arrow, {5, 5}, {5, 5}), {6, 6}, false},
        HitCase{"arrow like a line", shape(DrawingShapeType::arrow, {0, 0}, {0, 100}), {-19, 40}, true},
        HitCase{"rectangle outline", shape(DrawingShapeType::rectangle, {100, 100}, {300, 200}), {110, 150}, true},
        HitCase{"rectangle outside reach", shape(DrawingShapeType::rectangle, {100, 100}, {300, 200}), {79, 150},
                false},
        HitCase{"rectangle grown edge", shape(DrawingShapeType::rectangle, {100, 100}, {300, 200}), {80, 150}, true},
        HitCase{"rectangle interior stays", shape(DrawingShapeType::rectangle, {100, 100}, {300, 200}), {200, 150},
                false},
        HitCase{"rectangle drawn backwards", shape(DrawingShapeType::rectangle, {300, 200}, {100, 100}), {295, 150},
                true},
        HitCase{"thin rectangle has no inside", shape(DrawingShapeType::rectangle, {0, 0}, {30, 300}), {15, 150},
                true},
        HitCase{"circle outline", shape(DrawingShapeType::circle, {0, 0}, {200, 0}), {100, 118}, true},
        HitCase{"circle centre stays", shape(DrawingShapeType::circle, {0, 0}, {200, 0}), {100, 0}, false},
        HitCase{"circle far outside", shape(DrawingShapeType::circle, {0, 0}, {200, 0}), {100, 125}, false},
        HitCase{"freehand shapes never", shape(DrawingShapeType::freehand, {0, 0}, {10, 0}), {5, 0}, false}));

TEST(EraserPaths, PointsOnlyNotSegments) {
    FreehandPath path;
    path.points = {{0, 0}, {200, 0}};
    EXPECT_FALSE(EraserHitTest::hitsPath(path, {100, 0}));  // on the segment, far from both points
    EXPECT_TRUE(EraserHitTest::hitsPath(path, {12, 16}));   // exactly 20 from the first
}

TEST(DrawingOverlay, ClickWithTheLineToolLeavesAZeroLengthLine) {
    DrawingOverlay overlay;
    DrawingLayers layers;
    DrawingSelection sel;
    EXPECT_FALSE(overlay.pointerMoved({10, 10}, true, sel, layers));
    EXPECT_TRUE(overlay.pointerReleased({10, 10}, true, sel, layers));
    ASSERT_EQ(layers.shapes.size(), 1u);
    EXPECT_EQ(layers.shapes[0].type, DrawingShapeType::line);
    EXPECT_EQ(layers.shapes[0].startPoint, layers.shapes[0].endPoint);
    // No eraser removes it.
    sel.tool = DrawingTool::eraser;
    overlay.pointerMoved({10, 10}, true, sel, layers);
    overlay.pointerReleased({10, 10}, true, sel, layers);
    EXPECT_EQ(layers.shapes.size(), 1u);
}

TEST(DrawingOverlay, DragBuildsAShapeFromStartToEnd) {
    DrawingOverlay overlay;
    DrawingLayers layers;
    DrawingSelection sel;
    sel.tool = DrawingTool::arrow;
    overlay.pointerMoved({0, 0}, true, sel, layers);
    overlay.pointerMoved({50, 50}, true, sel, layers);
    ASSERT_TRUE(overlay.currentShape());
    EXPECT_EQ(overlay.currentShape()->endPoint, (Point{50, 50}));
    // A colour chosen mid-drag applies at the next change.
    sel.color = {0, 0, 1, 1};
    EXPECT_EQ(overlay.currentShape()->color, (DrawingColor{1, 0, 0, 1}));
    overlay.pointerMoved({60, 40}, true, sel, layers);
    EXPECT_EQ(overlay.currentShape()->color, sel.color);
    overlay.pointerReleased({70, 30}, true, sel, layers);
    ASSERT_EQ(layers.shapes.size(), 1u);
    EXPECT_EQ(layers.shapes[0].type, DrawingShapeType::arrow);
    EXPECT_EQ(layers.shapes[0].startPoint, (Point{0, 0}));
    EXPECT_EQ(layers.shapes[0].endPoint, (Point{70, 30}));
    EXPECT_FALSE(overlay.currentShape());
    EXPECT_FALSE(overlay.isDragging());
}

TEST(DrawingOverlay, FreehandKeepsEveryChangeAndNotTheEndAgain) {
    DrawingOverlay overlay;
    DrawingLayers layers;
    DrawingSelection sel;
    sel.tool = DrawingTool::freehand;
    sel.strokeWidth = 5;
    overlay.pointerMoved({1, 1}, true, sel, layers);  // start, then the same point as a change
    overlay.pointerMoved({2, 3}, true, sel, layers);
    overlay.pointerReleased({9, 9}, true, sel, layers);
    ASSERT_EQ(layers.paths.size(), 1u);
    EXPECT_EQ(layers.paths[0].points, (std::vector<Point>{{1, 1}, {1, 1}, {2, 3}}));
    EXPECT_EQ(layers.paths[0].strokeWidth, 5);
    EXPECT_TRUE(overlay.currentPath().empty());
}

TEST(DrawingOverlay, FreehandClickIsTwoEqualPoints) {
    DrawingOverlay overlay;
    DrawingLayers layers;
    DrawingSelection sel;
    sel.tool = DrawingTool::freehand;
    overlay.pointerMoved({4, 4}, true, sel, layers);
    overlay.pointerReleased({4, 4}, true, sel, layers);
    ASSERT_EQ(layers.paths.size(), 1u);
    EXPECT_EQ(layers.paths[0].points, (std::vector<Point>{{4, 4}, {4, 4}}));
}

TEST(DrawingOverlay, NothingHappensWithDrawingModeOff) {
    DrawingOverlay overlay;
    DrawingLayers layers;
    DrawingSelection sel;
    EXPECT_FALSE(overlay.pointerMoved({0, 0}, false, sel, layers));
    EXPECT_FALSE(overlay.pointerReleased({5, 5}, false, sel, layers));
    EXPECT_FALSE(overlay.isDragging());
    EXPECT_TRUE(layers.shapes.empty());
}

TEST(DrawingOverlay, EraserWorksAlongTheDragAndKeepsOrder) {
    DrawingLayers layers;
    layers.shapes = {shape(DrawingShapeType::rectangle, {0, 0}, {400, 400}),
                     shape(DrawingShapeType::line, {500, 0}, {500, 100}),
                     shape(DrawingShapeType::line, {600, 0}, {600, 100})};
    FreehandPath path;
    path.points = {{700, 50}};
    layers.paths = {path};
    const Uuid rect = layers.shapes[0].id;
    const Uuid last = layers.shapes[2].id;

    DrawingOverlay overlay;
    DrawingSelection sel;
    sel.tool = DrawingTool::eraser;
    overlay.pointerMoved({200, 200}, true, sel, layers);  // the rectangle's inside: stays
    EXPECT_EQ(layers.shapes.size(), 3u);
    EXPECT_TRUE(overlay.pointerMoved({505, 50}, true, sel, layers));
    EXPECT_TRUE(overlay.pointerMoved({690, 50}, true, sel, layers));
    EXPECT_FALSE(overlay.pointerReleased({600, 50}, true, sel, layers));  // nothing more at the end
    ASSERT_EQ(layers.shapes.size(), 2u);
    EXPECT_EQ(layers.shapes[0].id, rect);
    EXPECT_EQ(layers.shapes[1].id, last);
    EXPECT_TRUE(layers.paths.empty());
}

TEST(DrawingOverlay, CancelDropsTheGestureOnly) {
    DrawingOverlay overlay;
    DrawingLayers layers;
    DrawingSelection sel;
    overlay.pointerMoved({0, 0}, true, sel, layers);
    overlay.cancel();
    EXPECT_FALSE(overlay.currentShape());
    EXPECT_FALSE(overlay.pointerReleased({3, 3}, true, sel, layers));
    EXPECT_TRUE(layers.shapes.empty());
}

}  // namespace
}  // namespace orvane
