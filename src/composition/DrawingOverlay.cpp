#include "composition/DrawingOverlay.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "paint/ColorConvert.h"
#include "composition/EraserHitTest.h"

namespace orvane {

namespace {

constexpr double kArrowHeadLength = 15;  // does not follow the line width
constexpr double kInProgressOpacity = 0.7;

DrawingShape makeShape(DrawingShapeType type, Point start, Point end, const DrawingSelection& selection) {
    DrawingShape shape;  // a new id and the present time
    shape.type = type;
    shape.startPoint = start;
    shape.endPoint = end;
    shape.color = selection.color;
    shape.strokeWidth = selection.strokeWidth;
    return shape;
}

QPointF qt(Point p) { return {p.x, p.y}; }

}  // namespace

bool DrawingOverlay::pointerMoved(Point p, bool drawingModeEnabled, const DrawingSelection& selection,
                                  DrawingLayers& layers) {
    if (!drawingModeEnabled) return false;
    bool changed = false;
    if (!isDragging_) {
        isDragging_ = true;
        changed |= startDrawing(p, selection, layers);
    }
    changed |= updateDrawing(p, selection, layers);
    return changed;
}

bool DrawingOverlay::pointerReleased(Point p, bool drawingModeEnabled, const DrawingSelection& selection,
                                     DrawingLayers& layers) {
    if (!drawingModeEnabled || !isDragging_) return false;
    const bool changed = finishDrawing(p, selection, layers);
    isDragging_ = false;
    return changed;
}

bool DrawingOverlay::startDrawing(Point p, const DrawingSelection& selection, DrawingLayers& layers) {
    switch (selection.tool) {
    case DrawingTool::eraser: return eraseShapesAt(p, layers);
    case DrawingTool::freehand: currentPath_ = {p}; return false;
    default:
        currentShape_ = makeShape(*shapeTypeForTool(selection.tool), p, p, selection);
        return false;
    }
}

bool DrawingOverlay::updateDrawing(Point p, const DrawingSelection& selection, DrawingLayers& layers) {
    switch (selection.tool) {
    case DrawingTool::eraser: return eraseShapesAt(p, layers);
    case DrawingTool::freehand: currentPath_.push_back(p); return false;
    default:
        // Rebuilt with the current selection, so a colour chosen mid-drag
        // takes effect at the next change.
        if (currentShape_)
            currentShape_ = makeShape(*shapeTypeForTool(selection.tool), currentShape_->startPoint, p, selection);
        return false;
    }
}

bool DrawingOverlay::finishDrawing(Point p, const DrawingSelection& selection, DrawingLayers& layers) {
    switch (selection.tool) {
    case DrawingTool::eraser: return false;
    case DrawingTool::freehand: {
        if (currentPath_.empty()) return false;
        FreehandPath path;
        path.points = std::move(currentPath_);
        path.color = selection.color;
        path.strokeWidth = selection.strokeWidth;
        layers.paths.push_back(std::move(path));
        currentPath_.clear();
        return true;
    }
    default: {
        if (!currentShape_) return false;
        layers.shapes.push_back(makeShape(currentShape_->type, currentShape_->startPoint, p, selection));
        currentShape_.reset();
        return true;
    }
    }
}

bool DrawingOverlay::eraseShapesAt(Point p, DrawingLayers& layers) {
    const auto shapesBefore = layers.shapes.size();
    const auto pathsBefore = layers.paths.size();
    std::erase_if(layers.shapes, [&](const DrawingShape& s) { return EraserHitTest::hitsShape(s, p); });
    std::erase_if(layers.paths, [&](const FreehandPath& f) { return EraserHitTest::hitsPath(f, p); });
    return layers.shapes.size() != shapesBefore || layers.paths.size() != pathsBefore;
}

void DrawingOverlay::cancel() {
    currentShape_.reset();
    currentPath_.clear();
    isDragging_ = false;
}

void DrawingOverlay::paintShape(QPainter& painter, const DrawingShape& shape) {
    QPen pen(ColorConvert::from(shape.color), shape.strokeWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const QPointF a = qt(shape.startPoint);
    const QPointF b = qt(shape.endPoint);
    QPainterPath path;
    switch (shape.type) {
    case DrawingShapeType::line:
    case DrawingShapeType::freehand:
        path.moveTo(a);
        path.lineTo(b);
        break;
    case DrawingShapeType::arrow: {
        path.moveTo(a);
        path.lineTo(b);
        const double angle = std::atan2(b.y() - a.y(), b.x() - a.x());
        for (double side : {-M_PI / 6, M_PI / 6}) {
            path.moveTo(b);
            path.lineTo(b - kArrowHeadLength * QPointF(std::cos(angle + side), std::sin(angle + side)));
        }
        break;
    }
    case DrawingShapeType::rectangle: path.addRect(QRectF(a, b).normalized()); break;
    case DrawingShapeType::circle: {
        const QPointF c = (a + b) / 2;
        const double r = std::hypot(b.x() - a.x(), b.y() - a.y()) / 2;
        path.addEllipse(c, r, r);
        break;
    }
    }
    painter.drawPath(path);
    painter.restore();
}

void DrawingOverlay::paintPath(QPainter& painter, const std::vector<Point>& points, const DrawingColor& color,
                               double strokeWidth) {
    if (points.empty()) return;
    QPainterPath path;
    path.moveTo(qt(points.front()));
    for (std::size_t i = 1; i < points.size(); ++i) path.lineTo(qt(points[i]));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ColorConvert::from(color), strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (points.size() == 1)
        painter.drawPoint(qt(points.front()));
    else
        painter.drawPath(path);
    painter.restore();
}

void DrawingOverlay::paint(QPainter& painter, const std::vector<DrawingShape>& shapes,
                           const std::vector<FreehandPath>& paths, const DrawingSelection& selection) const {
    for (const DrawingShape& shape : shapes) paintShape(painter, shape);
    for (const FreehandPath& path : paths) paintPath(painter, path.points, path.color, path.strokeWidth);
    painter.save();
    painter.setOpacity(painter.opacity() * kInProgressOpacity);
    if (currentShape_) paintShape(painter, *currentShape_);
    if (selection.tool == DrawingTool::freehand && !currentPath_.empty())
        paintPath(painter, currentPath_, selection.color, selection.strokeWidth);
    painter.restore();
}

}  // namespace orvane
