#include "composition/SceneRenderer.h"

#include <QPainter>
#include <QRegion>
#include <algorithm>
#include <cmath>
#include <vector>

#include "composition/BackgroundPainter.h"
#include "composition/CompositionIdentity.h"
#include "composition/EaseInOut.h"
#include "composition/FrameSource.h"
#include "composition/SceneLayoutHelper.h"
#include "composition/StatusPainter.h"
#include "slides/SlideImageLoader.h"
#include "slides/SlidesRenderer.h"

namespace orvane {

SceneRenderer::SceneRenderer(SlideImageLoader* images)
    : ownImages_(images ? nullptr : std::make_unique<SlideImageLoader>()),
      images_(images ? images : ownImages_.get()),
      slides_(std::make_unique<SlidesRenderer>(*images_)) {}

SceneRenderer::~SceneRenderer() = default;

namespace {

bool sameSourceIds(const StreamingScene& a, const StreamingScene& b) {
    return std::equal(a.sources.begin(), a.sources.end(), b.sources.begin(), b.sources.end(),
                      [](const Source& x, const Source& y) { return x.id == y.id; });
}

}  // namespace

void SceneRenderer::noteSources(const StreamingScene& scene, const SceneRenderInputs& inputs, double now) {
    if (!inputs.rebuildsOnIdentityChange && drawn_ && drawn_->scene.id == scene.id &&
        !sameSourceIds(drawn_->scene, scene)) {
        auto leaving = std::make_unique<Leaving>();
        leaving->drawn = std::move(*drawn_);
        leaving->renderer = std::make_unique<SceneRenderer>(images_);
        leaving->at = now;
        leaving_ = std::move(leaving);
    }
    drawn_ = Drawn{scene, {}, {}};
    if (inputs.presetBranding) drawn_->branding = *inputs.presetBranding;
    if (inputs.progressBar) drawn_->progress = *inputs.progressBar;
}

void SceneRenderer::freezeFrames() {
    framesFrozen_ = true;
    if (leaving_) leaving_->renderer->freezeFrames();
}

void SceneRenderer::paintLeaving(QPainter& painter, QSizeF canvas, const SceneRenderInputs& in, double now) {
    if (!leaving_) return;
    const double t = (now - leaving_->at) / kSourceEase;
    if (!(t < 1) || t < 0) {
        leaving_.reset();
        leavingLayer_ = QImage();
        return;
    }
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    const QSize pixels = (canvas * dpr).toSize().expandedTo(QSize(1, 1));
    if (leavingLayer_.size() != pixels) leavingLayer_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    leavingLayer_.setDevicePixelRatio(dpr);
    leavingLayer_.fill(Qt::transparent);
    SceneRenderInputs old = in;
    old.scene = &leaving_->drawn.scene;
    old.presetBranding = leaving_->drawn.branding ? &*leaving_->drawn.branding : nullptr;
    old.progressBar = leaving_->drawn.progress ? &*leaving_->drawn.progress : nullptr;
    old.rebuildsOnIdentityChange = true;
    {
        QPainter p(&leavingLayer_);
        leaving_->renderer->render(p, canvas, old, now);
    }
    // The old picture over the new, fading out: the two cross-fade.
    painter.save();
    painter.setOpacity(painter.opacity() * (1 - EaseInOut::value(t)));
    painter.drawImage(QRectF(QPointF(0, 0), canvas), leavingLayer_);
    painter.restore();
}

void SceneRenderer::sync(const StreamingScene& scene, const SceneRenderInputs& inputs, double now) {
    std::string identity = CompositionIdentity::key(scene, inputs.sceneUpdateTimestamp);
    if (identity != identity_) {
        identity_ = std::move(identity);
        noteSources(scene, inputs, now);
        slideIndex_.clear();
        pageTurns_.clear();
        scroll_.clear();
        reach_.clear();
        // A rebuilt composition starts its zoom from 1.0.
        zoom_ = CinematicZoom{};
        // Capture views and remembered frames outlive a rebuild only while
        // their source stays.
        std::erase_if(lastFrames_, [&](const auto& item) {
            return std::none_of(scene.sources.begin(), scene.sources.end(),
                                [&](const Source& s) { return s.id == item.first; });
        });
        for (auto it = screens_.begin(); it != screens_.end();) {
            const bool kept = std::any_of(scene.sources.begin(), scene.sources.end(),
                                          [&](const Source& s) { return s.id == it->first; });
            it = kept ? std::next(it) : screens_.erase(it);
        }
    }
    zoom_.setEnabled(scene.cinematicZoomEnabled, now);
    blur_.setActive(inputs.isProgram && inputs.isBlurModeActive, now);
    for (const Source& source : scene.sources)
        if (source.type == SourceType::content && source.configuration.slidesResource &&
            !slideIndex_.contains(source.id))
            slideIndex_[source.id] = source.configuration.slidesResource->currentSlideIndex;
}

int SceneRenderer::slideIndex(const Source& source) const {
    if (const auto it = slideIndex_.find(source.id); it != slideIndex_.end()) return it->second;
    return source.configuration.slidesResource ? source.configuration.slidesResource->currentSlideIndex : 0;
}

bool SceneRenderer::isAnimating(double now) const {
    const double amount = blur_.amountAt(now);
    const bool fading = amount > 0 && amount < 1;
    const bool zooming = zoom_.isEnabled() || zoom_.scaleAt(now) != 1;
    const bool turning = std::any_of(pageTurns_.begin(), pageTurns_.end(),
                                     [&](const auto& entry) { return now - entry.second.at < kPageFade; });
    const bool easing = leaving_ && now - leaving_->at < kSourceEase;
    return fading || zooming || turning || easing || spinning_;
}

void SceneRenderer::render(QPainter& painter, QSizeF canvas, const SceneRenderInputs& in, double now) {
    if (!in.scene || !(canvas.width() >= 1 && canvas.height() >= 1) || canvas.width() > 1e5 || canvas.height() > 1e5)
        return;
    if (!std::isfinite(now)) now = 0;
    const StreamingScene& scene = *in.scene;
    sync(scene, in, now);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setClipRect(QRectF(QPointF(0, 0), canvas), Qt::IntersectClip);

    const SceneLayout layout = SceneLayoutHelper::effectiveLayout(scene);
    const LayoutFrame frames = SceneLayoutHelper::calculateFrames(layout, canvas);
    const bool pip = SceneLayoutHelper::isPipLayout(layout);
    const double zoom = zoom_.scaleAt(now);
    const QPointF centre(canvas.width() / 2, canvas.height() / 2);

    const Source* camera = nullptr;
    bool hasScreens = false;
    bool hasContent = false;
    for (const Source& s : scene.sources) {
        if (s.type == SourceType::camera && !camera) camera = &s;
        if (s.type == SourceType::screen || s.type == SourceType::window) hasScreens = true;
        if (s.type == SourceType::content) hasContent = true;
    }
    // Each source's latest frame is asked for once: a capture may deliver a
    // newer one while this render runs, and all layers of one render must
    // agree on the frame (and its size).
    std::vector<SourceFrame> latest(scene.sources.size());
    for (std::size_t i = 0; i < scene.sources.size(); ++i) {
        const Source& s = scene.sources[i];
        if (s.type == SourceType::content) continue;
        if (framesFrozen_) {
            const auto last = lastFrames_.find(s.id);
            if (last != lastFrames_.end()) latest[i] = last->second;
        } else if (in.frames) {
            latest[i] = in.frames->latestFrame(s);
            lastFrames_[s.id] = latest[i];
        }
    }
    const auto frameOf = [&](const Source& s) -> const SourceFrame& {
        return latest[static_cast<std::size_t>(&s - scene.sources.data())];
    };
    const auto paintCamera = [&] {
        if (camera && frames.cameraFrame)
            camera_.paint(painter, canvas, layout, *frames.cameraFrame, *camera, frameOf(*camera), zoom);
    };

    // Whatever an opaque frame will cover need not be painted under it: the
    // background is clipped around the largest such frame.
    QRectF covered;
    if (frames.contentFrame && hasScreens) {
        const double blurRadius = blur_.radiusAt(now);
        for (const Source& s : scene.sources) {
            if (s.type != SourceType::screen && s.type != SourceType::window) continue;
            const QRectF r = ScreenLayerPainter::opaqueRect(*frames.contentFrame, s, frameOf(s), blurRadius);
            if (r.width() * r.height() > covered.width() * covered.height()) covered = r;
        }
        // Under the zoom, about the canvas centre.
        covered = QRectF(centre + (covered.topLeft() - centre) * zoom, covered.size() * zoom);
    }
    const QRect hole(QPoint(int(std::ceil(covered.left())), int(std::ceil(covered.top()))),
                     QPoint(int(std::floor(covered.right())) - 1, int(std::floor(covered.bottom())) - 1));
    // The lowest screen's drop shadow goes into the background's cached
    // image when nothing moves between the two: no camera drawn under the
    // screens, no zoom.
    const Source* lowest = nullptr;
    for (const Source& s : scene.sources)
        if (s.type == SourceType::screen || s.type == SourceType::window) {
            lowest = &s;
            break;
        }
    const SoftShadow* bakedShadow = nullptr;
    QPointF shadowOffset;
    if (lowest && frames.contentFrame && zoom == 1 && (pip || !camera || !frames.cameraFrame))
        bakedShadow = screens_[lowest->id].shadow(*frames.contentFrame, *lowest, frameOf(*lowest), &shadowOffset);
    background_.paint(painter, canvas, scene, hole.isValid() && hole.width() > 64 && hole.height() > 64 ? hole : QRect(),
                      bakedShadow, shadowOffset);
    if (!pip) paintCamera();

    bool spinning = false;
    if (frames.contentFrame && hasScreens) {
        const double blurRadius = blur_.radiusAt(now);
        painter.save();
        painter.translate(centre);
        painter.scale(zoom, zoom);
        painter.translate(-centre);
        // Sources without a picture above the last one with a picture would
        // all centre their state in the same box; they share it in bands.
        const auto showsPicture = [&](const Source& s) {
            return frameOf(s).state == SourceFrame::State::frame && !frameOf(s).image.isNull();
        };
        std::size_t firstUncovered = 0;
        for (std::size_t i = 0; i < scene.sources.size(); ++i) {
            const Source& s = scene.sources[i];
            if ((s.type == SourceType::screen || s.type == SourceType::window) && showsPicture(s))
                firstUncovered = i + 1;
        }
        int stateCount = 0;
        for (std::size_t i = firstUncovered; i < scene.sources.size(); ++i)
            if (scene.sources[i].type == SourceType::screen || scene.sources[i].type == SourceType::window)
                ++stateCount;
        int stateIndex = 0;
        for (std::size_t i = 0; i < scene.sources.size(); ++i) {
            const Source& s = scene.sources[i];
            if (s.type != SourceType::screen && s.type != SourceType::window) continue;
            if (i >= firstUncovered && stateCount > 1) {
                StatusPainter::paintCaptureState(
                    painter, StatusPainter::stackedSlot(*frames.contentFrame, stateIndex++, stateCount), frameOf(s),
                    s.type, now);
            } else {
                screens_[s.id].paint(painter, *frames.contentFrame, s, frameOf(s), blurRadius,
                                     bakedShadow && &s == lowest, now);
            }
            if (frameOf(s).state == SourceFrame::State::starting) spinning = true;
        }
        painter.restore();
    }

    if (frames.contentFrame && hasContent) {
        // Content does not follow the cinematic zoom.
        for (const Source& s : scene.sources) {
            if (s.type != SourceType::content) continue;
            const auto& deck = s.configuration.slidesResource;
            if (s.configuration.contentType == ContentType::slides && deck)
                spinning = paintDeck(painter, *frames.contentFrame, s, now) || spinning;
            else
                StatusPainter::paintContentPlaceholder(painter, *frames.contentFrame, QString::fromStdString(s.name));
        }
    }

    if (pip) paintCamera();
    if (scene.sources.empty()) StatusPainter::paintEmptyScene(painter, QRectF(QPointF(0, 0), canvas));
    if (scene.brandingEnabled && in.presetBranding && in.presetBranding->enabled)
        branding_.paint(painter, canvas, *in.presetBranding);
    if (scene.progressBarEnabled && in.progressBar && in.progressBar->enabled)
        progress_.paint(painter, canvas, *in.progressBar);
    paintLeaving(painter, canvas, in, now);
    painter.restore();
    spinning_ = spinning;
}

bool SceneRenderer::paintDeck(QPainter& painter, QRectF box, const Source& source, double now) {
    const SlidesResource& deck = *source.configuration.slidesResource;
    const int index = slideIndex(source);
    const auto turn = pageTurns_.find(source.id);
    const double t = turn == pageTurns_.end() ? 1 : (now - turn->second.at) / kPageFade;
    const auto scrolled = scroll_.find(source.id);
    const double scroll = scrolled == scroll_.end() ? 0.0 : scrolled->second;
    if (t >= 1) {
        const SlidesRenderer::Painted painted = slides_->paint(painter, box, deck, index, scroll, now);
        reach_[source.id] = painted.reach;
        return painted.loading;
    }
    // The page that leaves, then the new one fading in over it as a whole.
    const bool leavingLoads = slides_->paint(painter, box, deck, turn->second.from, 0, now).loading;
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    bool loads = false;
    QImage layer((box.size() * dpr).toSize().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    layer.setDevicePixelRatio(dpr);
    layer.fill(Qt::transparent);
    {
        QPainter p(&layer);
        const SlidesRenderer::Painted painted =
            slides_->paint(p, QRectF(QPointF(0, 0), box.size()), deck, index, scroll, now);
        reach_[source.id] = painted.reach;
        loads = painted.loading;
    }
    painter.save();
    painter.setOpacity(painter.opacity() * EaseInOut::value(t));
    painter.drawImage(box, layer);
    painter.restore();
    return leavingLoads || loads;
}

bool SceneRenderer::click(QPointF point, QSizeF canvas, const SceneRenderInputs& in, const QPaintDevice* device,
                          double now) {
    if (!in.scene) return false;
    const StreamingScene& scene = *in.scene;
    const LayoutFrame frames = SceneLayoutHelper::calculateFrames(SceneLayoutHelper::effectiveLayout(scene), canvas);
    if (!frames.contentFrame) return false;
    const QRectF box = *frames.contentFrame;
    // Decks are stacked in scene order; the last one is on top.
    for (auto it = scene.sources.rbegin(); it != scene.sources.rend(); ++it) {
        const Source& s = *it;
        if (s.type != SourceType::content) continue;
        const auto& deck = s.configuration.slidesResource;
        if (s.configuration.contentType != ContentType::slides || !deck) return false;
        const int index = slideIndex(s);
        const auto button = SlidesRenderer::hitTest(point - box.topLeft(), box.size(), *deck, index, device);
        const int next = SlidesRenderer::pageAfter(button, index, static_cast<int>(deck->slides.size()));
        if (next == index) return false;
        slideIndex_[s.id] = next;
        pageTurns_[s.id] = {index, now};
        scroll_.erase(s.id);
        reach_.erase(s.id);
        return true;
    }
    return false;
}

double SceneRenderer::slideScroll(const Source& source) const {
    const auto it = scroll_.find(source.id);
    return it == scroll_.end() ? 0.0 : it->second;
}

bool SceneRenderer::scroll(QPointF point, double dy, QSizeF canvas, const SceneRenderInputs& in) {
    if (!in.scene || !std::isfinite(dy)) return false;
    const StreamingScene& scene = *in.scene;
    const LayoutFrame frames = SceneLayoutHelper::calculateFrames(SceneLayoutHelper::effectiveLayout(scene), canvas);
    if (!frames.contentFrame || !frames.contentFrame->contains(point)) return false;
    // The deck on top takes the scroll, as it takes clicks.
    for (auto it = scene.sources.rbegin(); it != scene.sources.rend(); ++it) {
        const Source& s = *it;
        if (s.type != SourceType::content) continue;
        if (s.configuration.contentType != ContentType::slides || !s.configuration.slidesResource) return false;
        // How far the body reaches is known once it has been drawn.
        const auto reach = reach_.find(s.id);
        const double limit = reach == reach_.end() ? 0.0 : reach->second;
        const double before = slideScroll(s);
        const double after = std::clamp(before + dy, 0.0, limit);
        if (after == before) return false;
        scroll_[s.id] = after;
        return true;
    }
    return false;
}

}  // namespace orvane
