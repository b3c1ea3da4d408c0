#pragma once

#include <QPointF>
#include <QSizeF>
#include <memory>
#include <optional>

#include "composition/TransitionPlayer.h"
#include "document/BrandingConfig.h"
#include "document/ProgressBarConfig.h"
#include "document/SceneTransitionConfig.h"
#include "document/StreamingScene.h"

class QPainter;
class QPaintDevice;

namespace orvane {

class FrameSource;
class SceneRenderer;

// What one surface (a stage or the pop-out window) shows of a scene: the
// renderer that keeps the composition's state, and on surfaces that play
// them the transition from the previous picture to the next.
class CompositionSurface {
public:
    enum class EmptyPicture {
        mock,       // stages: MockStreamContent whenever a scene has no sources or there is none
        noProgram,  // the pop-out window: "No Program Active" without a scene
    };

    struct Context {
        const BrandingConfig* branding = nullptr;
        const ProgressBarConfig* progressBar = nullptr;
        bool isProgram = false;
        bool isBlurModeActive = false;
        double sceneUpdateTimestamp = 0;
        const FrameSource* frames = nullptr;
    };

    CompositionSurface(EmptyPicture empty, bool playsTransitions);
    ~CompositionSurface();

    // Monotonic seconds shared by every surface.
    static double now();

    // Takes the scene to show. A new scene id on a surface that plays
    // transitions starts one from whatever was shown before.
    void setScene(const std::optional<StreamingScene>& scene, const std::optional<SceneTransitionConfig>& transition,
                  double now);
    const std::optional<StreamingScene>& scene() const { return scene_; }

    // Paints into a painter whose origin is the picture's top left corner.
    void paint(QPainter& painter, QSizeF canvas, const Context& context, double now);
    bool click(QPointF point, QSizeF canvas, const Context& context, const QPaintDevice* device);

    // Whether the picture moves on its own at `now`: a transition, an
    // animation of the composition, or live sources.
    bool needsFrames(double now) const;
    bool isTransitionActive(double now) const { return player_.isActive(now); }
    // The page that a deck of the shown scene is on here.
    int slideIndex(const Source& source) const;
    // Whether a scene with sources is drawn (rather than a placeholder).
    bool showsComposition() const;

private:
    bool showsCompositionOf(const std::optional<StreamingScene>& scene) const;
    void paintPicture(QPainter& painter, QSizeF canvas, const std::optional<StreamingScene>& scene,
                      SceneRenderer& renderer, const Context& context, double now);

    EmptyPicture empty_;
    bool playsTransitions_;
    std::optional<StreamingScene> scene_;
    std::unique_ptr<SceneRenderer> renderer_;
    std::optional<StreamingScene> leavingScene_;
    std::unique_ptr<SceneRenderer> leavingRenderer_;
    TransitionPlayer player_;
    bool hasShownSomething_ = false;
};

}  // namespace orvane
