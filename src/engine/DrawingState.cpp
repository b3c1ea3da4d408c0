#include "engine/DrawingState.h"

#include <algorithm>
#include <cmath>

#include "engine/AssignIfChanged.h"

namespace orvane {

DrawingState::DrawingState(QObject* parent) : QObject(parent) {}

void DrawingState::toggleDrawingMode() {
    setIsDrawingModeEnabled(!isDrawingModeEnabled_);
    if (!isDrawingModeEnabled_) setShowDrawingToolbar(false);
}

void DrawingState::removeFreehandPathsIntersecting(const Point& point, double radius) {
    const auto touches = [&](const FreehandPath& path) {
        return std::any_of(path.points.begin(), path.points.end(), [&](const Point& p) {
            return std::hypot(p.x - point.x, p.y - point.y) <= radius;
        });
    };
    std::vector<FreehandPath> kept = freehandPaths_;
    if (std::erase_if(kept, touches) > 0) setFreehandPaths(kept);
}

void DrawingState::setIsDrawingModeEnabled(bool enabled) {
    if (assignIfChanged(isDrawingModeEnabled_, enabled)) emit isDrawingModeEnabledChanged(enabled);
}

void DrawingState::setSelectedDrawingTool(DrawingTool tool) {
    if (assignIfChanged(selectedDrawingTool_, tool)) emit selectedDrawingToolChanged();
}

void DrawingState::setSelectedDrawingColor(const DrawingColor& color) {
    if (assignIfChanged(selectedDrawingColor_, color)) emit selectedDrawingColorChanged();
}

void DrawingState::setDrawingStrokeWidth(double width) {
    if (assignIfChanged(drawingStrokeWidth_, width)) emit drawingStrokeWidthChanged(width);
}

void DrawingState::setDrawingShapes(const std::vector<DrawingShape>& shapes) {
    drawingShapes_ = shapes;
    emit drawingShapesChanged();
}

void DrawingState::setFreehandPaths(const std::vector<FreehandPath>& paths) {
    freehandPaths_ = paths;
    emit freehandPathsChanged();
}

void DrawingState::setShowDrawingToolbar(bool show) {
    if (assignIfChanged(showDrawingToolbar_, show)) emit showDrawingToolbarChanged(show);
}

void DrawingState::setDrawingButtonPosition(DrawingButtonPosition position) {
    if (assignIfChanged(drawingButtonPosition_, position)) emit drawingButtonPositionChanged();
}

void DrawingState::setShowDrawingButton(bool show) {
    if (assignIfChanged(showDrawingButton_, show)) emit showDrawingButtonChanged(show);
}

}  // namespace orvane
