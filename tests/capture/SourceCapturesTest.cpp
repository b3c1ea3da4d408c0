#include <gtest/gtest.h>

#include <atomic>

#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/SourceCaptures.h"
#include "support/FakeCaptureBackend.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace source_captures_test {

class SourceCapturesTest : public ::testing::Test {
protected:
    void SetUp() override {
        screens.displayList = {{71, 960, 1080, "Main Display", QRect(0, 0, 960, 1080)}};
    }

    static Source make(SourceType type) {
        Source s;
        s.type = type;
        return s;
    }

    SourceFrame pictureWhenReady(SourceCaptures& captures, const Source& source) {
        SourceFrame picture;
        test::waitUntil([&] {
            picture = captures.latestFrame(source);
            return picture.state != SourceFrame::State::starting && picture.state != SourceFrame::State::idle;
        });
        return picture;
    }

    test::FakeCaptureBackend screens;
    LavfiCameraBackend cameras;
    CaptureHub hub;
};

TEST_F(SourceCapturesTest, EachKindOfSourceGivesItsPicture) {
    SourceCaptures captures(screens, cameras, hub, CaptureQuality::forOrdinal(0));
    screens.openDelayMs = 200;
    const Source screen = make(SourceType::screen);
    EXPECT_EQ(captures.latestFrame(screen).state, SourceFrame::State::starting);
    const SourceFrame shown = pictureWhenReady(captures, screen);
    EXPECT_EQ(shown.state, SourceFrame::State::frame);
    EXPECT_EQ(shown.image.size(), QSize(960, 540));

    Source stale = make(SourceType::screen);
    stale.configuration.screenId = 4242;
    const SourceFrame failed = pictureWhenReady(captures, stale);
    EXPECT_EQ(failed.state, SourceFrame::State::failed);
    EXPECT_EQ(failed.message, "Capture error: No display found");

    const Source camera = make(SourceType::camera);
    const SourceFrame live = pictureWhenReady(captures, camera);
    EXPECT_EQ(live.state, SourceFrame::State::frame);
    EXPECT_EQ(live.image.size(), QSize(640, 480));

    Source missingCamera = make(SourceType::camera);
    missingCamera.configuration.cameraDeviceId = "/dev/video9";
    const SourceFrame gone = pictureWhenReady(captures, missingCamera);  // said on its black box
    EXPECT_EQ(gone.state, SourceFrame::State::failed);
    EXPECT_EQ(gone.message, "No camera device found");
    EXPECT_EQ(captures.latestFrame(make(SourceType::content)).state, SourceFrame::State::idle);
}

TEST_F(SourceCapturesTest, SourcesOfOneDisplayShareACaptureUntilDropped) {
    SourceCaptures captures(screens, cameras, hub, CaptureQuality::forOrdinal(1));
    Source first = make(SourceType::screen), second = make(SourceType::screen);
    first.configuration.screenId = second.configuration.screenId = 71;
    EXPECT_EQ(pictureWhenReady(captures, first).state, SourceFrame::State::frame);
    EXPECT_EQ(pictureWhenReady(captures, second).state, SourceFrame::State::frame);
    EXPECT_EQ(screens.openStreamCount(), 1);
    EXPECT_EQ(captures.activeCount(), 2);

    captures.retainOnly({second.id});
    EXPECT_EQ(captures.activeCount(), 1);
    EXPECT_EQ(screens.openStreamCount(), 1);
    captures.retainOnly({});
    EXPECT_EQ(screens.openStreamCount(), 0);
}

TEST_F(SourceCapturesTest, QualityChangeRestartsAtTheNewSize) {
    SourceCaptures captures(screens, cameras, hub, CaptureQuality::forOrdinal(0));
    const Source screen = make(SourceType::screen);
    EXPECT_EQ(pictureWhenReady(captures, screen).image.size(), QSize(960, 540));
    captures.setQuality(CaptureQuality::forOrdinal(2));
    EXPECT_TRUE(test::waitUntil([&] { return captures.latestFrame(screen).image.size() == QSize(1920, 1080); }));
    EXPECT_EQ(screens.openStreamCount(), 1);
    EXPECT_EQ(screens.opened(), 2);
}

TEST_F(SourceCapturesTest, AChangedTargetRestartsTheSourcesCapture) {
    screens.displayList.push_back({72, 960, 1080, "Display 72", QRect(960, 0, 960, 1080)});
    SourceCaptures captures(screens, cameras, hub, CaptureQuality::forOrdinal(0));
    Source screen = make(SourceType::screen);
    screen.configuration.screenId = 71;
    EXPECT_EQ(pictureWhenReady(captures, screen).state, SourceFrame::State::frame);
    screen.configuration.screenId = 72;
    EXPECT_EQ(pictureWhenReady(captures, screen).state, SourceFrame::State::frame);
    EXPECT_EQ(screens.opened(), 2);
    EXPECT_EQ(screens.openStreamCount(), 1);
}

// Two lavfi cameras of solid colours, counting what is opened.
class CountingCameras : public CameraBackend {
public:
    std::vector<CameraDevice> cameras() override { return patterns_.cameras(); }
    CaptureResult<std::unique_ptr<CaptureStream>> openCamera(const QString& id) override {
        ++opened;
        return patterns_.openCamera(id);
    }
    std::atomic<int> opened{0};

private:
    LavfiCameraBackend patterns_{{{{"lavfi:red", "Red"}, "color=c=red:size=320x240:rate=25"},
                                  {{"lavfi:blue", "Blue"}, "color=c=blue:size=320x240:rate=25"}}};
};

TEST_F(SourceCapturesTest, ChoosingAnotherCameraRebuildsTheSourcesCapture) {
    CountingCameras counting;
    SourceCaptures captures(screens, counting, hub, CaptureQuality::forOrdinal(0));
    Source camera = make(SourceType::camera);
    camera.configuration.cameraDeviceId = "lavfi:red";
    const QRect whole(0, 0, 320, 240);
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage image = captures.latestFrame(camera).image;
        return !image.isNull() && test::pixelsUnlike(image, whole, Qt::red, 6) == 0;
    }));
    EXPECT_EQ(counting.opened, 1);
    EXPECT_EQ(hub.runningCount(), 1);
    ASSERT_TRUE(hub.find("camera:lavfi:red"));

    // The same source, now pointed at the other camera.
    camera.configuration.cameraDeviceId = "lavfi:blue";
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage image = captures.latestFrame(camera).image;
        return !image.isNull() && test::pixelsUnlike(image, whole, Qt::blue, 6) == 0;
    }));
    EXPECT_EQ(counting.opened, 2);
    EXPECT_EQ(hub.runningCount(), 1);  // the red camera's capture is gone
    EXPECT_FALSE(hub.find("camera:lavfi:red"));
    EXPECT_TRUE(hub.find("camera:lavfi:blue"));
    EXPECT_EQ(captures.activeCount(), 1);

    // Asking again with the same choice keeps the running capture.
    captures.latestFrame(camera);
    EXPECT_EQ(counting.opened, 2);
}

}  // namespace
}  // namespace orvane
