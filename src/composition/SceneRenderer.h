#pragma once

#include <QPointF>
#include <QSizeF>
#include <QImage>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "composition/BackgroundPainter.h"
#include "composition/BlurFade.h"
#include "composition/BrandingPainter.h"
#include "composition/CameraLayerPainter.h"
#include "composition/CinematicZoom.h"
#include "composition/ProgressBarPainter.h"
#include "composition/SceneRenderInputs.h"
#include "composition/ScreenLayerPainter.h"
#include "document/Uuid.h"

class QPainter;

namespace orvane {

class SlideImageLoader;
class SlidesRenderer;

// Paints one composition of a scene into any painter at any canvas size:
// background, camera, screens and windows, content, empty state, branding,
// progress. One renderer stands for one composition on one surface: it keeps
// what a composition keeps (the zoom's motion, the blur's fade, each deck's
// page, image caches). When the scene's identity changes it starts afresh,
// as a rebuilt composition would.
//
// Time is passed in, in seconds on any steady clock, so that renders are
// reproducible.
class SceneRenderer {
public:
    // `images` loads slide pictures and may be shared between renderers; when
    // null the renderer makes its own.
    explicit SceneRenderer(SlideImageLoader* images = nullptr);
    ~SceneRenderer();
    SceneRenderer(const SceneRenderer&) = delete;
    SceneRenderer& operator=(const SceneRenderer&) = delete;

    void render(QPainter& painter, QSizeF canvas, const SceneRenderInputs& inputs, double now);

    // A click at a canvas point at time `now`: turns a deck's page when it
    // hits a page button (the new page fades in over 0.3 seconds). Returns
    // whether something changed (draw again).
    bool click(QPointF point, QSizeF canvas, const SceneRenderInputs& inputs, const QPaintDevice* device,
               double now);

    // A scroll of `dy` points (positive: further down the slide) at a canvas
    // point: moves the body of the deck there, as far as it reaches below
    // its area. Returns whether something changed (draw again).
    bool scroll(QPointF point, double dy, QSizeF canvas, const SceneRenderInputs& inputs);

    // How far a deck source's slide body is scrolled here.
    double slideScroll(const Source& source) const;

    static constexpr double kPageFade = 0.3;  // seconds
    static constexpr double kSourceEase = 0.2;  // seconds

    // Whether the picture is moving at `now` (zoom, blur fade, page turn,
    // sources easing, a capture's progress ring), so that the host keeps
    // drawing.
    bool isAnimating(double now) const;

    // The page a deck source shows here.
    int slideIndex(const Source& source) const;

    // From now on draws every live source with the last frame it drew of it,
    // and asks the frame source for nothing: a picture that is leaving keeps
    // its last look while the captures behind it may already be gone.
    void freezeFrames();

    SlideImageLoader& imageLoader() { return *images_; }

private:
    void sync(const StreamingScene& scene, const SceneRenderInputs& inputs, double now);

    std::unique_ptr<SlideImageLoader> ownImages_;
    SlideImageLoader* images_;
    std::unique_ptr<SlidesRenderer> slides_;

    // Starts the ease when the sources of the same scene change in a host
    // that updates in place; remembers what is drawn now for the next change.
    void noteSources(const StreamingScene& scene, const SceneRenderInputs& inputs, double now);
    void paintLeaving(QPainter& painter, QSizeF canvas, const SceneRenderInputs& inputs, double now);

    std::string identity_;
    // What was drawn before the last change of identity, kept for the ease.
    struct Drawn {
        StreamingScene scene;
        std::optional<BrandingConfig> branding;
        std::optional<ProgressBarConfig> progress;
    };
    std::optional<Drawn> drawn_;
    // The picture the sources left, fading out over the new one.
    struct Leaving {
        Drawn drawn;
        std::unique_ptr<SceneRenderer> renderer;
        double at = 0;
    };
    std::unique_ptr<Leaving> leaving_;
    bool spinning_ = false;  // the last render showed a capture starting or a picture loading
    QImage leavingLayer_;
    CinematicZoom zoom_;
    BlurFade blur_;
    struct PageTurn {
        int from = 0;
        double at = 0;
    };
    // Returns whether a picture of the deck is still loading (its spinner turns).
    bool paintDeck(QPainter& painter, QRectF box, const Source& source, double now);

    std::unordered_map<Uuid, int> slideIndex_;
    std::unordered_map<Uuid, PageTurn> pageTurns_;
    // Each deck's scroll, and how far its body reached when last drawn;
    // a new page starts at the top.
    std::unordered_map<Uuid, double> scroll_;
    std::unordered_map<Uuid, double> reach_;
    // The last frame drawn of each live source, and whether only those are
    // drawn from now on.
    std::unordered_map<Uuid, SourceFrame> lastFrames_;
    bool framesFrozen_ = false;

    BackgroundPainter background_;
    CameraLayerPainter camera_;
    std::unordered_map<Uuid, ScreenLayerPainter> screens_;
    BrandingPainter branding_;
    ProgressBarPainter progress_;
};

}  // namespace orvane
