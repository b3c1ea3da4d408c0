#include "console/stages/DrawingOverlayWidget.h"

#include <QMouseEvent>
#include <QPainter>

#include "engine/StreamManager.h"

namespace orvane {

DrawingOverlayWidget::DrawingOverlayWidget(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAccessibleName(QStringLiteral("Drawing"));
    setCursor(Qt::CrossCursor);
    auto repaint = [this] { update(); };
    connect(&streamManager_.drawing(), &DrawingState::drawingShapesChanged, this, repaint);
    connect(&streamManager_.drawing(), &DrawingState::freehandPathsChanged, this, repaint);
    connect(&streamManager_.drawing(), &DrawingState::isDrawingModeEnabledChanged, this, [this](bool on) {
        if (!on) overlay_.cancel();
        update();
    });
}

DrawingSelection DrawingOverlayWidget::selection() const {
    return {streamManager_.drawing().selectedDrawingTool(), streamManager_.drawing().selectedDrawingColor(),
            streamManager_.drawing().drawingStrokeWidth()};
}

DrawingLayers DrawingOverlayWidget::layers() const {
    return {streamManager_.drawing().drawingShapes(), streamManager_.drawing().freehandPaths()};
}

void DrawingOverlayWidget::commit(const DrawingLayers& layers) {
    streamManager_.drawing().setDrawingShapes(layers.shapes);
    streamManager_.drawing().setFreehandPaths(layers.paths);
    update();
}

void DrawingOverlayWidget::paintEvent(QPaintEvent*) {
    if (!streamManager_.drawing().isDrawingModeEnabled()) return;
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    overlay_.paint(p, layers(), selection());
}

void DrawingOverlayWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    DrawingLayers l = layers();
    const Point at{event->position().x(), event->position().y()};
    if (overlay_.pointerMoved(at, streamManager_.drawing().isDrawingModeEnabled(), selection(), l)) commit(l);
    update();
}

void DrawingOverlayWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton)) return;
    DrawingLayers l = layers();
    const Point at{event->position().x(), event->position().y()};
    if (overlay_.pointerMoved(at, streamManager_.drawing().isDrawingModeEnabled(), selection(), l)) commit(l);
    update();
}

void DrawingOverlayWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    DrawingLayers l = layers();
    const Point at{event->position().x(), event->position().y()};
    if (overlay_.pointerReleased(at, streamManager_.drawing().isDrawingModeEnabled(), selection(), l)) commit(l);
    update();
}

void DrawingOverlayWidget::hideEvent(QHideEvent* event) {
    overlay_.cancel();
    QWidget::hideEvent(event);
}

}  // namespace orvane
