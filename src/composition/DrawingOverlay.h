#pragma once

#include <optional>
#include <vector>

#include "document/DrawingColor.h"
#include "document/DrawingShape.h"
#include "document/DrawingTool.h"
#include "document/FreehandPath.h"
#include "document/Geometry.h"

class QPainter;

namespace orvane {

// The drawing of the session: finished shapes and strokes. The session owns
// it; overlays change it through DrawingOverlay and hand it back.
struct DrawingLayers {
    std::vector<DrawingShape> shapes;
    std::vector<FreehandPath> paths;
};

// What the toolbar has selected.
struct DrawingSelection {
    DrawingTool tool = DrawingTool::line;
    DrawingColor color{1, 0, 0, 1};
    double strokeWidth = 3.0;
};

// One drawing overlay on one surface: the gesture in progress and the
// painting of the whole drawing. Stage widgets forward pointer events; every
// call that changes the session's drawing says so by returning true, and the
// widget then hands the layers back to the session.
//
// Points are in the overlay's own coordinates and are never converted, so
// the same drawing stands at other relative places on surfaces of other
// sizes.
class DrawingOverlay {
public:
    // Pointer events of one drag gesture (a press already counts as a change).
    bool pointerMoved(Point p, bool drawingModeEnabled, const DrawingSelection& selection, DrawingLayers& layers);
    bool pointerReleased(Point p, bool drawingModeEnabled, const DrawingSelection& selection, DrawingLayers& layers);

    // The steps of a gesture.
    bool startDrawing(Point p, const DrawingSelection& selection, DrawingLayers& layers);
    bool updateDrawing(Point p, const DrawingSelection& selection, DrawingLayers& layers);
    bool finishDrawing(Point p, const DrawingSelection& selection, DrawingLayers& layers);

    // Removes every shape whose outline and every path with a point within
    // the eraser's reach of p.
    static bool eraseShapesAt(Point p, DrawingLayers& layers);

    // Drops the gesture in progress (drawing mode went off mid-drag).
    void cancel();

    // Shapes in order, then all strokes, then what is being drawn at 0.7.
    void paint(QPainter& painter, const DrawingLayers& layers, const DrawingSelection& selection) const {
        paint(painter, layers.shapes, layers.paths, selection);
    }
    // The same straight from the session's two lists, without copying them.
    void paint(QPainter& painter, const std::vector<DrawingShape>& shapes, const std::vector<FreehandPath>& paths,
               const DrawingSelection& selection) const;

    static void paintShape(QPainter& painter, const DrawingShape& shape);
    static void paintPath(QPainter& painter, const std::vector<Point>& points, const DrawingColor& color,
                          double strokeWidth);

    const std::optional<DrawingShape>& currentShape() const { return currentShape_; }
    const std::vector<Point>& currentPath() const { return currentPath_; }
    bool isDragging() const { return isDragging_; }

private:
    std::optional<DrawingShape> currentShape_;
    std::vector<Point> currentPath_;
    bool isDragging_ = false;
};

}  // namespace orvane
