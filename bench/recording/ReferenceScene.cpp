#include "ReferenceScene.h"

#include <QTest>

#include <cstdio>

#include "capture/SharedCapture.h"

namespace orvane {

ReferenceScene::ReferenceScene(Feed feed)
    : cameras_({{{QStringLiteral("lavfi:bench"), QStringLiteral("Bench Camera")},
                 QStringLiteral("testsrc2=size=1280x720:rate=30")}}) {
    scene_.name = "Reference";
    scene_.backgroundType = BackgroundType::gradient;
    scene_.layout = SceneLayout::pipBottomRight;
    Source cam;
    cam.type = SourceType::camera;
    cam.name = "Camera";
    cam.configuration.cameraDeviceId = "lavfi:bench";
    Source screen;
    screen.type = SourceType::screen;
    screen.name = "Screen";
    screen.configuration.screenId = 1;
    scene_.sources = {cam, screen};
    branding_.enabled = true;
    branding_.text = "OrvaneUI";
    scene_.brandingEnabled = true;

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
