#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

namespace orvane {

class CompositionSurface;
class DrawingOverlayWidget;
class FloatingDrawingControls;
class FrameSource;
class StreamManager;

// The pop-out window's content: the program scene full-size on black (blur
// applies here), "No Program Active" without one, the drawing and the
// floating drawing controls. Each composed frame is counted by the
// performance monitor.
class VirtualCameraOutputView : public QWidget {
    Q_OBJECT

public:
    VirtualCameraOutputView(StreamManager& streamManager, const FrameSource* frames, QWidget* parent = nullptr);
    ~VirtualCameraOutputView() override;

    // The 16:9 picture inside the window.
    QRect pictureBox() const;
    DrawingOverlayWidget* drawingOverlay() const { return drawing_; }
    FloatingDrawingControls* floatingControls() const { return controls_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void takeScene();
    void refreshOverlays();
    void scheduleFrames();

    StreamManager& streamManager_;
    const FrameSource* frames_;
    std::unique_ptr<CompositionSurface> surface_;
    DrawingOverlayWidget* drawing_ = nullptr;
    FloatingDrawingControls* controls_ = nullptr;
    QTimer frameTimer_;
};

}  // namespace orvane
