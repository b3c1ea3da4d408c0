#include "console/DrawingOverlayWidget.h"

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
    connect(&streamManager_, &StreamManager::drawingShapesChanged, this, repaint);
    connect(&streamManager_, &StreamManager::freehandPathsChanged, this, repaint);
    connect(&streamManager_, &StreamManager::isDrawingModeEnabledChanged, this, [this](bool on) {
        if (!on) overlay_.cancel();
        update();
    });
}

DrawingSelection DrawingOverlayWidget::selection() const {
    return {streamManager_.selectedDrawingTool(), streamManager_.selectedDrawingColor(),
            streamManager_.drawingStrokeWidth()};
}

DrawingLayers DrawingOverlayWidget::layers() const {
    return {streamManager_.drawingShapes(), streamManager_.freehandPaths()};
}

void DrawingOverlayWidget::commit(const DrawingLayers& layers) {
    streamManager_.setDrawingShapes(layers.shapes);
    streamManager_.setFreehandPaths(layers.paths);
    update();
}

void DrawingOverlayWidget::paintEvent(QPaintEvent*) {
    if (!streamManager_.isDrawingModeEnabled()) return;
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    overlay_.paint(p, layers(), selection());
}

void DrawingOverlayWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    DrawingLayers l = layers();
    const Point at{event->position().x(), event->position().y()};
    if (overlay_.pointerMoved(at, streamManager_.isDrawingModeEnabled(), selection(), l)) commit(l);
    update();
}

void DrawingOverlayWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton)) return;
    DrawingLayers l = layers();
    const Point at{event->position().x(), event->position().y()};
    if (overlay_.pointerMoved(at, streamManager_.isDrawingModeEnabled(), selection(), l)) commit(l);
    update();
}

void DrawingOverlayWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    DrawingLayers l = layers();
    const Point at{event->position().x(), event->position().y()};
    if (overlay_.pointerReleased(at, streamManager_.isDrawingModeEnabled(), selection(), l)) commit(l);
    update();
}

void DrawingOverlayWidget::hideEvent(QHideEvent* event) {
    overlay_.cancel();
    QWidget::hideEvent(event);
}

}  // namespace orvane
