#include "console/stages/StreamPreviewView.h"

#include <QMouseEvent>
#include <QPainter>

#include "console/controls/Theme.h"
#include "console/stages/CompositionSurface.h"
#include "console/stages/DrawingOverlayWidget.h"
#include "console/stages/StageFrameRate.h"
#include "console/stages/StagePlaceholders.h"
#include "console/stages/UpdateLiveButton.h"
#include "engine/PerformanceMonitor.h"
#include "engine/StreamManager.h"

namespace orvane {

StreamPreviewView::StreamPreviewView(Role role, StreamManager& streamManager, const FrameSource* frames,
                                     QWidget* parent)
    : QWidget(parent),
      role_(role),
      streamManager_(streamManager),
      frames_(frames),
      surface_(std::make_unique<CompositionSurface>(CompositionSurface::EmptyPicture::mock, role == Role::program)) {
    setAccessibleName(role == Role::preview ? QStringLiteral("Preview") : QStringLiteral("Program"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    if (role == Role::preview) {
        updateButton_ = new UpdateLiveButton(streamManager_, this);
    } else {
        drawing_ = new DrawingOverlayWidget(streamManager_, this);
        drawing_->hide();
    }

    frameTimer_.setTimerType(Qt::PreciseTimer);
    connect(&frameTimer_, &QTimer::timeout, this, qOverload<>(&QWidget::update));

    auto changed = [this] { update(); };
    connect(&streamManager_, role == Role::preview ? &StreamManager::activeSceneChanged
                                                   : &StreamManager::programSceneChanged,
            this, &StreamPreviewView::takeScene);
    connect(&streamManager_, &StreamManager::currentPresetChanged, this, [this] {
        updateDrawingOverlay();  // the preset decides whether the program shows here
        update();
    });
    connect(&streamManager_, &StreamManager::sceneUpdateTimestampChanged, this, changed);
    connect(&streamManager_, &StreamManager::progressBarUpdateTimestampChanged, this, changed);
    connect(&streamManager_, &StreamManager::isBlurModeActiveChanged, this, changed);
    const ProgramWindowController* window = &streamManager_.programWindowController();
    connect(window, &ProgramWindowController::isProgramWindowOpenChanged, this, [this] {
        updateDrawingOverlay();
        update();
    });
    connect(&streamManager_.drawing(), &DrawingState::isDrawingModeEnabledChanged, this,
            &StreamPreviewView::updateDrawingOverlay);
    connect(&streamManager_, &StreamManager::streamQualityChanged, this, &StreamPreviewView::scheduleFrames);

    surface_->setScene(role == Role::preview ? streamManager_.activeScene() : streamManager_.programScene(),
                       std::nullopt, CompositionSurface::now());
    updateDrawingOverlay();
}

StreamPreviewView::~StreamPreviewView() = default;

void StreamPreviewView::takeScene() {
    std::optional<SceneTransitionConfig> transition;
    if (const auto& preset = streamManager_.currentPreset()) transition = preset->sceneTransition;
    surface_->setScene(role_ == Role::preview ? streamManager_.activeScene() : streamManager_.programScene(),
                       transition, CompositionSurface::now());
    update();
}

QRect StreamPreviewView::fitSixteenByNine(const QRect& area) {
    int w = area.width();
    int h = w * 9 / 16;
    if (h > area.height()) {
        h = area.height();
        w = h * 16 / 9;
    }
    return QRect(area.left() + (area.width() - w) / 2, area.top() + (area.height() - h) / 2, w, h);
}

QRect StreamPreviewView::pictureBox() const { return fitSixteenByNine(rect().adjusted(8, 8, -8, -8)); }

bool StreamPreviewView::isShowingPopOutPlaceholder() const {
    if (role_ != Role::program || !streamManager_.programWindowController().isProgramWindowOpen()) return false;
    const auto& preset = streamManager_.currentPreset();
    return preset && preset->hideProgramWhenPopout;
}

bool StreamPreviewView::isShowingMockContent() const {
    return !isShowingPopOutPlaceholder() && !surface_->showsComposition();
}

int StreamPreviewView::framesPerSecond() const { return StageFrameRate::forQuality(streamManager_.streamQuality()); }

void StreamPreviewView::scheduleFrames() {
    const bool moving = isVisible() && !isShowingPopOutPlaceholder() && surface_->needsFrames(CompositionSurface::now());
    if (!moving) {
        frameTimer_.stop();
        return;
    }
    // A transition runs at display rate; live pictures at the capture rate.
    const bool transition = surface_->isTransitionActive(CompositionSurface::now());
    const int interval = transition ? 16 : 1000 / std::max(1, framesPerSecond());
    if (!frameTimer_.isActive() || frameTimer_.interval() != interval) frameTimer_.start(interval);
}

void StreamPreviewView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Qt::black);
    const QRect box = pictureBox();
    const double now = CompositionSurface::now();
    if (isShowingPopOutPlaceholder()) {
        StagePlaceholders::paintProgramInPopOut(p, box);
    } else {
        const auto& preset = streamManager_.currentPreset();
        CompositionSurface::Context context;
        context.branding = preset && preset->branding ? &*preset->branding : nullptr;
        context.progressBar = preset && preset->progressBar ? &*preset->progressBar : nullptr;
        context.isProgram = false;  // both stages: blur shows in the pop-out window only
        context.isBlurModeActive = streamManager_.isBlurModeActive();
        context.sceneUpdateTimestamp = streamManager_.sceneUpdateTimestamp().toMSecsSinceEpoch() / 1000.0;
        context.frames = frames_;
        p.save();
        p.translate(box.topLeft());
        surface_->paint(p, box.size(), context, now);
        p.restore();
        if (role_ == Role::program) streamManager_.performanceMonitor()->frameComposed(this);
    }
    if (isLive()) {
        p.setRenderHint(QPainter::Antialiasing, false);
        p.setPen(QPen(Theme::withAlpha(Theme::red(), 0.5), 2));
        p.setBrush(Qt::NoBrush);
        p.drawRect(QRectF(box).adjusted(1, 1, -1, -1));
    }
    scheduleFrames();
}

void StreamPreviewView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layoutChildren();
}

void StreamPreviewView::layoutChildren() {
    const QRect box = pictureBox();
    if (updateButton_) {
        const QSize s = updateButton_->sizeHint();
        // The button's own shadow margin takes part of the 16 points of padding.
        updateButton_->setGeometry(box.right() - 6 - s.width(), box.bottom() - 6 - s.height(), s.width(), s.height());
        updateButton_->raise();
    }
    if (drawing_) drawing_->setGeometry(box);
}

void StreamPreviewView::updateDrawingOverlay() {
    if (!drawing_) return;
    drawing_->setVisible(streamManager_.drawing().isDrawingModeEnabled() && !isShowingPopOutPlaceholder());
    layoutChildren();
    drawing_->raise();
}

void StreamPreviewView::mousePressEvent(QMouseEvent* event) {
    const QRect box = pictureBox();
    if (!box.contains(event->position().toPoint()) || isShowingPopOutPlaceholder()) return;
    const auto& preset = streamManager_.currentPreset();
    CompositionSurface::Context context;
    context.branding = preset && preset->branding ? &*preset->branding : nullptr;
    context.progressBar = preset && preset->progressBar ? &*preset->progressBar : nullptr;
    context.isBlurModeActive = streamManager_.isBlurModeActive();
    context.sceneUpdateTimestamp = streamManager_.sceneUpdateTimestamp().toMSecsSinceEpoch() / 1000.0;
    context.frames = frames_;
    if (surface_->click(event->position() - box.topLeft(), box.size(), context, this)) update();
}

}  // namespace orvane
