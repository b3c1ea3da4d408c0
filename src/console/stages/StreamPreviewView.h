#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

namespace orvane {

class CompositionSurface;
class DrawingOverlayWidget;
class FrameSource;
class StreamManager;
class UpdateLiveButton;

// One stage's picture: the composition of the preview or the program scene
// in a 16:9 box on black. It draws at the capture rate while something
// moves (live sources, a transition, an animation) and otherwise only on a
// change. The program stage plays the transitions, carries the red border
// and the drawing, and gives way to a placeholder while the pop-out window
// shows the program and the preset asks for it.
class StreamPreviewView : public QWidget {
    Q_OBJECT

public:
    enum class Role { preview, program };

    StreamPreviewView(Role role, StreamManager& streamManager, const FrameSource* frames, QWidget* parent = nullptr);
    ~StreamPreviewView() override;

    Role role() const { return role_; }
    bool isLive() const { return role_ == Role::program; }
    bool showUpdateButton() const { return role_ == Role::preview; }
    bool useActiveScene() const { return role_ == Role::preview; }

    // The largest 16:9 box that fits, centred.
    QRect pictureBox() const;
    static QRect fitSixteenByNine(const QRect& area);
    // The program is drawn in the pop-out window only.
    bool isShowingPopOutPlaceholder() const;
    bool isShowingMockContent() const;
    bool isRepaintingContinuously() const { return frameTimer_.isActive(); }
    UpdateLiveButton* updateLiveButton() const { return updateButton_; }
    DrawingOverlayWidget* drawingOverlay() const { return drawing_; }
    // The id of the scene on this stage.
    const CompositionSurface& surface() const { return *surface_; }

    QSize sizeHint() const override { return {640, 360}; }
    QSize minimumSizeHint() const override { return {160, 90}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void takeScene();
    void layoutChildren();
    void scheduleFrames();
    void updateDrawingOverlay();
    int framesPerSecond() const;

    Role role_;
    StreamManager& streamManager_;
    const FrameSource* frames_;
    std::unique_ptr<CompositionSurface> surface_;
    UpdateLiveButton* updateButton_ = nullptr;
    DrawingOverlayWidget* drawing_ = nullptr;
    QTimer frameTimer_;
};

}  // namespace orvane
