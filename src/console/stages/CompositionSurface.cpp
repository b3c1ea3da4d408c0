#include "console/stages/CompositionSurface.h"

#include <QElapsedTimer>
#include <QPainter>

#include "composition/SceneRenderer.h"
#include "composition/TransitionEffect.h"
#include "console/stages/MockStreamContent.h"
#include "console/stages/StagePlaceholders.h"

namespace orvane {

namespace {
bool hasLiveSource(const StreamingScene& scene) {
    for (const Source& source : scene.sources)
        if (source.type != SourceType::content) return true;
    return false;
}
}  // namespace

CompositionSurface::CompositionSurface(EmptyPicture empty, bool playsTransitions)
    : empty_(empty), playsTransitions_(playsTransitions), renderer_(std::make_unique<SceneRenderer>()) {}

CompositionSurface::~CompositionSurface() = default;

double CompositionSurface::now() {
    static QElapsedTimer clock = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return clock.nsecsElapsed() / 1e9;
}

void CompositionSurface::setScene(const std::optional<StreamingScene>& scene,
                                  const std::optional<SceneTransitionConfig>& transition, double now) {
    const bool first = !hasShownSomething_;
    hasShownSomething_ = true;
    const bool sameId = scene && scene_ && scene->id == scene_->id;
    const bool bothAbsent = !scene && !scene_;
    if (sameId || bothAbsent) {
        scene_ = scene;  // an edit of the same scene: no transition
        return;
    }
    if (playsTransitions_ && !first) {
        leavingScene_ = scene_;
        leavingRenderer_ = std::move(renderer_);
        // The leaving picture keeps its last frames: the captures behind it
        // stop once no scene on screen shows them.
        leavingRenderer_->freezeFrames();
        renderer_ = std::make_unique<SceneRenderer>();
        player_.start(TransitionEffect::plan(transition), now);
    }
    scene_ = scene;
}

bool CompositionSurface::showsCompositionOf(const std::optional<StreamingScene>& scene) const {
    if (!scene) return false;
    return empty_ == EmptyPicture::noProgram || !scene->sources.empty();
}

bool CompositionSurface::showsComposition() const { return showsCompositionOf(scene_); }

void CompositionSurface::paintPicture(QPainter& painter, QSizeF canvas, const std::optional<StreamingScene>& scene,
                                      SceneRenderer& renderer, const Context& context, double now) {
    const QRectF box(QPointF(0, 0), canvas);
    if (showsCompositionOf(scene)) {
        SceneRenderInputs inputs;
        inputs.scene = &*scene;
        inputs.presetBranding = context.branding;
        inputs.progressBar = context.progressBar;
        inputs.isProgram = context.isProgram;
        inputs.isBlurModeActive = context.isBlurModeActive;
        inputs.sceneUpdateTimestamp = context.sceneUpdateTimestamp;
        inputs.frames = context.frames;
        painter.save();
        painter.setClipRect(box, Qt::IntersectClip);
        renderer.render(painter, canvas, inputs, now);
        painter.restore();
    } else if (empty_ == EmptyPicture::mock) {
        MockStreamContent::paint(painter, box);
    } else {
        StagePlaceholders::paintNoProgram(painter, box);
    }
}

void CompositionSurface::paint(QPainter& painter, QSizeF canvas, const Context& context, double now) {
    if (player_.isActive(now) && leavingRenderer_) {
        // Pictures that slide or grow stay inside the surface.
        painter.save();
        painter.setClipRect(QRectF(QPointF(0, 0), canvas), Qt::IntersectClip);
        player_.paint(
            painter, canvas, now,
            [&](QPainter& p) { paintPicture(p, canvas, leavingScene_, *leavingRenderer_, context, now); },
            [&](QPainter& p) { paintPicture(p, canvas, scene_, *renderer_, context, now); });
        painter.restore();
        return;
    }
    if (leavingRenderer_) {
        leavingRenderer_.reset();
        leavingScene_.reset();
    }
    paintPicture(painter, canvas, scene_, *renderer_, context, now);
}

bool CompositionSurface::click(QPointF point, QSizeF canvas, const Context& context, const QPaintDevice* device) {
    if (!showsComposition()) return false;
    SceneRenderInputs inputs;
    inputs.scene = &*scene_;
    inputs.presetBranding = context.branding;
    inputs.progressBar = context.progressBar;
    inputs.isProgram = context.isProgram;
    inputs.isBlurModeActive = context.isBlurModeActive;
    inputs.sceneUpdateTimestamp = context.sceneUpdateTimestamp;
    inputs.frames = context.frames;
    return renderer_->click(point, canvas, inputs, device, now());
}

int CompositionSurface::slideIndex(const Source& source) const { return renderer_->slideIndex(source); }

bool CompositionSurface::needsFrames(double now) const {
    if (player_.isActive(now)) return true;
    if (!showsComposition()) return false;
    return renderer_->isAnimating(now) || hasLiveSource(*scene_);
}

}  // namespace orvane
