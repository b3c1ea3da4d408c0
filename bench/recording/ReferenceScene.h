#pragma once

#include <QImage>
#include <QTemporaryDir>

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "MovingDesktop.h"
#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "document/BrandingConfig.h"
#include "document/ProgressBarConfig.h"
#include "document/StreamingScene.h"
#include "recording/LiveFrameTable.h"

namespace orvane {

class SharedCapture;

// The recording benchmark's scene: the benchmarks' reference scene
// (ReferenceSceneSetup: gradient, the 1920 by 1080 screen at scale 0.8 with
// border, shadow and rounded corners, a circle camera, branding with logo
// and text, a six-step progress bar), its screen changing on every frame
// and its camera moving.
//
// Live, the camera is a running capture of a test pattern and the screen a
// MovingDesktop publishing 60 pictures a second. Stepped, both show a fixed
// cycle of pictures (the camera's taken from the running capture first),
// and step(n) chooses which: the sources as a 30 Hz recording finds them at
// frame n (the desktop two pictures on), for the anchor's frames and for
// measuring the stages of a frame one by one. Captured, nothing is bound:
// the caller captures the camera and the desktop the application's way,
// through cameras() and desktop() (whose cycle is drawn).
class ReferenceScene {
public:
    enum class Feed { live, stepped, captured };

    explicit ReferenceScene(Feed feed);
    ~ReferenceScene();

    void step(std::int64_t n) { step_ = n; }

    const StreamingScene& scene() const { return scene_; }
    const BrandingConfig& branding() const { return branding_; }
    const ProgressBarConfig& progress() const { return progress_; }
    std::shared_ptr<LiveFrameTable> frames() const { return frames_; }
    LavfiCameraBackend& cameras() { return cameras_; }
    const MovingDesktop& desktop() const { return desktop_; }

    static constexpr int kCycle = 30;

private:
    QTemporaryDir logoFolder_;
    LavfiCameraBackend cameras_;
    CaptureHub hub_;
    std::shared_ptr<SharedCapture> camera_;
    MovingDesktop desktop_;
    std::vector<QImage> cameraCycle_;   // stepped: one picture a frame
    std::vector<QImage> desktopCycle_;  // stepped: two pictures a frame
    std::atomic<std::int64_t> step_{0};
    std::shared_ptr<LiveFrameTable> frames_ = std::make_shared<LiveFrameTable>();
    StreamingScene scene_;
    BrandingConfig branding_;
    ProgressBarConfig progress_;
};

}  // namespace orvane
