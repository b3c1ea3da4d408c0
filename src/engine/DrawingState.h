#pragma once

#include <QObject>

#include <vector>

#include "document/DrawingColor.h"
#include "document/DrawingShape.h"
#include "document/DrawingTool.h"
#include "document/FreehandPath.h"
#include "document/Geometry.h"
#include "engine/DrawingButtonPosition.h"

namespace orvane {

// What the presenter draws over the program, and the switches of the drawing
// controls. Session-long and in memory only: no preset file holds any of it,
// and nothing here is cleared when the preset or the scene changes.
//
// Record-valued properties notify on every assignment; plain values only
// when they change.
class DrawingState : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isDrawingModeEnabled READ isDrawingModeEnabled WRITE setIsDrawingModeEnabled NOTIFY isDrawingModeEnabledChanged)
    Q_PROPERTY(orvane::DrawingTool selectedDrawingTool READ selectedDrawingTool WRITE setSelectedDrawingTool NOTIFY selectedDrawingToolChanged)
    Q_PROPERTY(orvane::DrawingColor selectedDrawingColor READ selectedDrawingColor WRITE setSelectedDrawingColor NOTIFY selectedDrawingColorChanged)
    Q_PROPERTY(double drawingStrokeWidth READ drawingStrokeWidth WRITE setDrawingStrokeWidth NOTIFY drawingStrokeWidthChanged)
    Q_PROPERTY(std::vector<orvane::DrawingShape> drawingShapes READ drawingShapes WRITE setDrawingShapes NOTIFY drawingShapesChanged)
    Q_PROPERTY(std::vector<orvane::FreehandPath> freehandPaths READ freehandPaths WRITE setFreehandPaths NOTIFY freehandPathsChanged)
    Q_PROPERTY(bool showDrawingToolbar READ showDrawingToolbar WRITE setShowDrawingToolbar NOTIFY showDrawingToolbarChanged)
    Q_PROPERTY(orvane::DrawingButtonPosition drawingButtonPosition READ drawingButtonPosition WRITE setDrawingButtonPosition NOTIFY drawingButtonPositionChanged)
    Q_PROPERTY(bool showDrawingButton READ showDrawingButton WRITE setShowDrawingButton NOTIFY showDrawingButtonChanged)

public:
    explicit DrawingState(QObject* parent = nullptr);

    bool isDrawingModeEnabled() const { return isDrawingModeEnabled_; }
    void setIsDrawingModeEnabled(bool enabled);
    DrawingTool selectedDrawingTool() const { return selectedDrawingTool_; }
    void setSelectedDrawingTool(DrawingTool tool);
    const DrawingColor& selectedDrawingColor() const { return selectedDrawingColor_; }
    void setSelectedDrawingColor(const DrawingColor& color);
    double drawingStrokeWidth() const { return drawingStrokeWidth_; }
    void setDrawingStrokeWidth(double width);
    const std::vector<DrawingShape>& drawingShapes() const { return drawingShapes_; }
    void setDrawingShapes(const std::vector<DrawingShape>& shapes);
    const std::vector<FreehandPath>& freehandPaths() const { return freehandPaths_; }
    void setFreehandPaths(const std::vector<FreehandPath>& paths);
    bool showDrawingToolbar() const { return showDrawingToolbar_; }
    void setShowDrawingToolbar(bool show);
    DrawingButtonPosition drawingButtonPosition() const { return drawingButtonPosition_; }
    void setDrawingButtonPosition(DrawingButtonPosition position);
    bool showDrawingButton() const { return showDrawingButton_; }
    void setShowDrawingButton(bool show);

public slots:
    // Arms or disarms drawing; disarming also hides the toolbar. What is
    // drawn stays.
    void toggleDrawingMode();
    // The eraser's sweep over freehand strokes: every path with a point no
    // farther than `radius` from `point` goes.
    void removeFreehandPathsIntersecting(const orvane::Point& point, double radius);

signals:
    void isDrawingModeEnabledChanged(bool enabled);
    void selectedDrawingToolChanged();
    void selectedDrawingColorChanged();
    void drawingStrokeWidthChanged(double width);
    void drawingShapesChanged();
    void freehandPathsChanged();
    void showDrawingToolbarChanged(bool show);
    void drawingButtonPositionChanged();
    void showDrawingButtonChanged(bool show);

private:
    bool isDrawingModeEnabled_ = false;
    DrawingTool selectedDrawingTool_ = DrawingTool::line;
    DrawingColor selectedDrawingColor_{1, 0, 0, 1};
    double drawingStrokeWidth_ = 3.0;
    std::vector<DrawingShape> drawingShapes_;
    std::vector<FreehandPath> freehandPaths_;
    bool showDrawingToolbar_ = false;
    DrawingButtonPosition drawingButtonPosition_ = DrawingButtonPosition::bottomRight;
    bool showDrawingButton_ = false;
};

}  // namespace orvane
