// The drawing over the program on its own: initial values, which setters
// notify when, the mode switch and the eraser's sweep over freehand strokes.

#include <QSignalSpy>

#include <gtest/gtest.h>

#include "engine/DrawingState.h"

namespace orvane {
namespace drawing_state_test {

FreehandPath pathThrough(std::vector<Point> points) {
    FreehandPath path;
    path.points = std::move(points);
    return path;
}

TEST(DrawingState, StartsDisarmedWithARedThreePointLineAndNothingDrawn) {
    DrawingState drawing;
    EXPECT_FALSE(drawing.isDrawingModeEnabled());
    EXPECT_EQ(drawing.selectedDrawingTool(), DrawingTool::line);
    EXPECT_EQ(drawing.selectedDrawingColor(), (DrawingColor{1, 0, 0, 1}));
    EXPECT_EQ(drawing.drawingStrokeWidth(), 3.0);
    EXPECT_TRUE(drawing.drawingShapes().empty());
    EXPECT_TRUE(drawing.freehandPaths().empty());
    EXPECT_FALSE(drawing.showDrawingToolbar());
    EXPECT_EQ(drawing.drawingButtonPosition(), DrawingButtonPosition::bottomRight);
    EXPECT_FALSE(drawing.showDrawingButton());
}

TEST(DrawingState, PlainValuesNotifyOnlyWhenTheyChange) {
    DrawingState drawing;
    QSignalSpy mode(&drawing, &DrawingState::isDrawingModeEnabledChanged);
    QSignalSpy tool(&drawing, &DrawingState::selectedDrawingToolChanged);
    QSignalSpy colour(&drawing, &DrawingState::selectedDrawingColorChanged);
    QSignalSpy width(&drawing, &DrawingState::drawingStrokeWidthChanged);
    QSignalSpy position(&drawing, &DrawingState::drawingButtonPositionChanged);
    QSignalSpy button(&drawing, &DrawingState::showDrawingButtonChanged);

    drawing.setIsDrawingModeEnabled(false);
    drawing.setSelectedDrawingTool(DrawingTool::line);
    drawing.setSelectedDrawingColor(DrawingColor{1, 0, 0, 1});
    drawing.setDrawingStrokeWidth(3.0);
    drawing.setDrawingButtonPosition(DrawingButtonPosition::bottomRight);
    drawing.setShowDrawingButton(false);
    for (const QSignalSpy* spy : {&mode, &tool, &colour, &width, &position, &button}) EXPECT_EQ(spy->count(), 0);

    drawing.setIsDrawingModeEnabled(true);
    drawing.setSelectedDrawingTool(DrawingTool::eraser);
    drawing.setSelectedDrawingColor(DrawingColor{0, 0, 1, 1});
    drawing.setDrawingStrokeWidth(10);
    drawing.setDrawingButtonPosition(DrawingButtonPosition::centerLeft);
    drawing.setShowDrawingButton(true);
    for (const QSignalSpy* spy : {&mode, &tool, &colour, &width, &position, &button}) EXPECT_EQ(spy->count(), 1);
    EXPECT_EQ(mode.at(0).at(0).toBool(), true);
    EXPECT_EQ(width.at(0).at(0).toDouble(), 10.0);
    EXPECT_EQ(drawing.selectedDrawingTool(), DrawingTool::eraser);
    EXPECT_EQ(drawing.drawingButtonPosition(), DrawingButtonPosition::centerLeft);
}

TEST(DrawingState, ListsNotifyOnEveryAssignment) {
    DrawingState drawing;
    QSignalSpy shapes(&drawing, &DrawingState::drawingShapesChanged);
    QSignalSpy paths(&drawing, &DrawingState::freehandPathsChanged);
    drawing.setDrawingShapes({});
    drawing.setDrawingShapes({});
    drawing.setFreehandPaths({});
    EXPECT_EQ(shapes.count(), 2);
    EXPECT_EQ(paths.count(), 1);
}

TEST(DrawingState, ReadableAndWritableThroughTheMetaObject) {
    DrawingState drawing;
    EXPECT_TRUE(drawing.setProperty("drawingStrokeWidth", 5.0));
    EXPECT_EQ(drawing.drawingStrokeWidth(), 5.0);
    EXPECT_TRUE(drawing.setProperty("selectedDrawingTool", QVariant::fromValue(DrawingTool::freehand)));
    EXPECT_EQ(drawing.property("selectedDrawingTool").value<DrawingTool>(), DrawingTool::freehand);
}

TEST(DrawingState, TogglingOffHidesTheToolbarAndKeepsTheDrawing) {
    DrawingState drawing;
    DrawingShape shape;
    shape.endPoint = {40, 30};
    drawing.setDrawingShapes({shape});
    drawing.setFreehandPaths({pathThrough({{1, 1}, {2, 2}})});
    QSignalSpy toolbar(&drawing, &DrawingState::showDrawingToolbarChanged);

    drawing.toggleDrawingMode();
    EXPECT_TRUE(drawing.isDrawingModeEnabled());
    EXPECT_FALSE(drawing.showDrawingToolbar());  // turning on does not show it
    drawing.setShowDrawingToolbar(true);
    drawing.toggleDrawingMode();
    EXPECT_FALSE(drawing.isDrawingModeEnabled());
    EXPECT_FALSE(drawing.showDrawingToolbar());
    EXPECT_EQ(toolbar.count(), 2);
    ASSERT_EQ(drawing.drawingShapes().size(), 1u);
    EXPECT_EQ(drawing.drawingShapes()[0].id, shape.id);
    EXPECT_EQ(drawing.freehandPaths().size(), 1u);
}

TEST(DrawingState, EraserSweepRemovesPathsWithAPointWithinTheRadius) {
    DrawingState drawing;
    const FreehandPath touching = pathThrough({{100, 100}, {13, 16}});  // (13, 16) is exactly 5 away
    const FreehandPath clear = pathThrough({{15.01, 12}, {10, 17.01}});
    drawing.setFreehandPaths({touching, clear});
    QSignalSpy paths(&drawing, &DrawingState::freehandPathsChanged);

    drawing.removeFreehandPathsIntersecting({10, 12}, 5);
    ASSERT_EQ(drawing.freehandPaths().size(), 1u);
    EXPECT_EQ(drawing.freehandPaths()[0].id, clear.id);
    EXPECT_EQ(paths.count(), 1);

    // A sweep that touches nothing leaves the list, and its observers, alone.
    drawing.removeFreehandPathsIntersecting({500, 500}, 20);
    EXPECT_EQ(drawing.freehandPaths().size(), 1u);
    EXPECT_EQ(paths.count(), 1);
}

}  // namespace
}  // namespace orvane
