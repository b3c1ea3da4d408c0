#pragma once

#include <QWidget>

#include "composition/DrawingOverlay.h"

namespace orvane {

class StreamManager;

// The session's drawing over a picture, taking the pointer while drawing
// mode is on. Points are this widget's own coordinates; the drawing is the
// session's, so every overlay shows the same strokes.
class DrawingOverlayWidget : public QWidget {
    Q_OBJECT

public:
    explicit DrawingOverlayWidget(StreamManager& streamManager, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    DrawingSelection selection() const;
    DrawingLayers layers() const;
    void commit(const DrawingLayers& layers);

    StreamManager& streamManager_;
    DrawingOverlay overlay_;
};

}  // namespace orvane
