#include "ReferenceScene.h"

#include <QTest>

#include <cstdio>

#include "ReferenceSceneSetup.h"
#include "capture/SharedCapture.h"

namespace orvane {

ReferenceScene::ReferenceScene(Feed feed)
    : cameras_({{{QStringLiteral("lavfi:bench"), QStringLiteral("Bench Camera")},
                 QStringLiteral("testsrc2=size=%1x%2:rate=30")
                     .arg(ReferenceSceneSetup::kCameraSize.width())
                     .arg(ReferenceSceneSetup::kCameraSize.height())}}) {
    const QString logo = logoFolder_.filePath(QStringLiteral("logo.png"));
    if (!ReferenceSceneSetup::writeLogo(logo)) std::fprintf(stderr, "the bench logo was not written\n");
    const ReferenceSceneSetup setup(logo);
    scene_ = setup.scene;
    branding_ = setup.branding;
    progress_ = setup.progress;
    Source& screen = scene_.sources[0];
    Source& cam = scene_.sources[1];
    cam.configuration.cameraDeviceId = "lavfi:bench";
    if (feed == Feed::captured) {
        desktop_.drawCycle();
        return;
    }

    camera_ = hub_.acquire(QStringLiteral("camera:lavfi:bench"), 0,
                           [this] { return cameras_.openCamera(QStringLiteral("lavfi:bench")); });
    if (feed == Feed::live) {
        std::shared_ptr<SharedCapture> capture = camera_;
        frames_->bindCapture(cam.id, [capture] { return capture->latestFrame(); });
        desktop_.start();
        frames_->bindCapture(screen.id, [this] { return desktop_.latestFrame(); });
        if (!QTest::qWaitFor([this] { return camera_->latestFrame().sequence > 0; }, 5000))
            std::fprintf(stderr, "the bench camera shows nothing yet\n");
        return;
    }
    // A cycle of distinct camera pictures, then the capture goes.
    std::uint64_t seen = 0;
    const bool cycled = QTest::qWaitFor(
        [&] {
            const CapturedFrame frame = camera_->latestFrame();
            if (frame.sequence != seen && !frame.image.isNull()) {
                seen = frame.sequence;
                cameraCycle_.push_back(frame.image);
            }
            return cameraCycle_.size() >= kCycle;
        },
        10000);
    if (!cycled) std::fprintf(stderr, "the bench camera gave %zu pictures\n", cameraCycle_.size());
    camera_.reset();
    for (int n = 0; n < MovingDesktop::kCycle; ++n) desktopCycle_.push_back(desktop_.frameAt(n));
    const auto cycle = [this](const std::vector<QImage>& pictures, std::int64_t picturesPerFrame) {
        return [this, &pictures, picturesPerFrame] {
            if (pictures.empty()) return CapturedFrame{};
            const std::int64_t n = step_ * picturesPerFrame;
            CapturedFrame frame;
            frame.image = pictures[static_cast<std::size_t>(n % static_cast<std::int64_t>(pictures.size()))];
            frame.sequence = static_cast<std::uint64_t>(n + 1);
            return frame;
        };
    };
    frames_->bindCapture(cam.id, cycle(cameraCycle_, 1));
    frames_->bindCapture(screen.id, cycle(desktopCycle_, MovingDesktop::kPicturesPerSecond / 30));
}

ReferenceScene::~ReferenceScene() { frames_->clear(); }

}  // namespace orvane
