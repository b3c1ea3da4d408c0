#include "console/program_window/VirtualCameraOutputView.h"

#include <QMouseEvent>
#include <QPainter>

#include "console/program_window/FloatingDrawingControls.h"
#include "console/stages/CompositionSurface.h"
#include "console/stages/DrawingOverlayWidget.h"
#include "console/stages/StageFrameRate.h"
#include "console/stages/StreamPreviewView.h"
#include "engine/PerformanceMonitor.h"
#include "engine/StreamManager.h"

namespace orvane {

VirtualCameraOutputView::VirtualCameraOutputView(StreamManager& streamManager, const FrameSource* frames,
                                                 QWidget* parent)
    : QWidget(parent),
      streamManager_(streamManager),
      frames_(frames),
      // The window updates in place, with no transition, also while the
      // console's program stage plays one.
      surface_(std::make_unique<CompositionSurface>(CompositionSurface::EmptyPicture::noProgram, false)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Program Output"));
    drawing_ = new DrawingOverlayWidget(streamManager_, this);
    controls_ = new FloatingDrawingControls(streamManager_, this);

    frameTimer_.setTimerType(Qt::PreciseTimer);
    connect(&frameTimer_, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    auto changed = [this] { update(); };
    connect(&streamManager_, &StreamManager::programSceneChanged, this, &VirtualCameraOutputView::takeScene);
    connect(&streamManager_, &StreamManager::currentPresetChanged, this, changed);
    connect(&streamManager_, &StreamManager::progressBarUpdateTimestampChanged, this, changed);
    connect(&streamManager_, &StreamManager::isBlurModeActiveChanged, this, changed);
    connect(&streamManager_.drawing(), &DrawingState::isDrawingModeEnabledChanged, this,
            &VirtualCameraOutputView::refreshOverlays);
    connect(&streamManager_.drawing(), &DrawingState::showDrawingButtonChanged, this,
            &VirtualCameraOutputView::refreshOverlays);
    surface_->setScene(streamManager_.programScene(), std::nullopt, CompositionSurface::now());
    refreshOverlays();
}

VirtualCameraOutputView::~VirtualCameraOutputView() = default;

QRect VirtualCameraOutputView::pictureBox() const { return StreamPreviewView::fitSixteenByNine(rect()); }

void VirtualCameraOutputView::takeScene() {
    std::optional<SceneTransitionConfig> transition;
    if (const auto& preset = streamManager_.currentPreset()) transition = preset->sceneTransition;
    surface_->setScene(streamManager_.programScene(), transition, CompositionSurface::now());
    update();
}

void VirtualCameraOutputView::refreshOverlays() {
    drawing_->setVisible(streamManager_.drawing().isDrawingModeEnabled());
    controls_->setVisible(streamManager_.drawing().showDrawingButton());
    controls_->placeIn(rect());
    drawing_->raise();
    controls_->raise();
}

void VirtualCameraOutputView::scheduleFrames() {
    const double now = CompositionSurface::now();
    if (!isVisible() || !surface_->needsFrames(now)) {
        frameTimer_.stop();
        return;
    }
    const int interval = surface_->isTransitionActive(now)
                             ? 16
                             : 1000 / std::max(1, StageFrameRate::forQuality(streamManager_.streamQuality()));
    if (!frameTimer_.isActive() || frameTimer_.interval() != interval) frameTimer_.start(interval);
}

void VirtualCameraOutputView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Qt::black);
    const QRect box = pictureBox();
    const auto& preset = streamManager_.currentPreset();
    CompositionSurface::Context context;
    context.branding = preset && preset->branding ? &*preset->branding : nullptr;
    context.progressBar = preset && preset->progressBar ? &*preset->progressBar : nullptr;
    context.isProgram = true;
    context.isBlurModeActive = streamManager_.isBlurModeActive();
    context.sceneUpdateTimestamp = 0;  // the window's composition is fixed at the epoch
    context.frames = frames_;
    p.translate(box.topLeft());
    surface_->paint(p, box.size(), context, CompositionSurface::now());
    streamManager_.performanceMonitor()->frameComposed(this);
    scheduleFrames();
}

void VirtualCameraOutputView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    drawing_->setGeometry(rect());
    controls_->placeIn(rect());
}

void VirtualCameraOutputView::mousePressEvent(QMouseEvent* event) {
    const QRect box = pictureBox();
    if (!box.contains(event->position().toPoint())) return;
    CompositionSurface::Context context;
    context.isProgram = true;
    context.isBlurModeActive = streamManager_.isBlurModeActive();
    context.frames = frames_;
    if (surface_->click(event->position() - box.topLeft(), box.size(), context, this)) update();
}

}  // namespace orvane
