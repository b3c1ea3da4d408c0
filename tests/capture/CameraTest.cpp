#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "capture/CameraFeed.h"
#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/linux/V4l2CameraBackend.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace camera_test {

::testing::Environment* const qtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtTestEnvironment(false));

TEST(LavfiCamera, ListsItsPatternWithIdAndName) {
    LavfiCameraBackend backend;
    const auto cameras = backend.cameras();
    ASSERT_EQ(cameras.size(), 1u);
    EXPECT_EQ(cameras[0].id, "lavfi:smptebars");
    EXPECT_EQ(cameras[0].name, "Test Pattern");
}

TEST(LavfiCamera, DeliversColourBarsAtTheirSizeAndRate) {
    LavfiCameraBackend backend;
    CaptureHub hub;
    CameraFeed feed(backend, hub);
    feed.start(std::nullopt);  // the first camera
    EXPECT_EQ(feed.deviceId(), "lavfi:smptebars");
    ASSERT_TRUE(test::waitUntil([&] { return !feed.capturedImage().isNull(); }));
    const QImage frame = feed.capturedImage();
    ASSERT_EQ(frame.size(), QSize(640, 480));

    // The upper two thirds hold seven bars at 75 %: grey, yellow, cyan,
    // green, magenta, red, blue.
    const QColor bars[] = {{191, 191, 191}, {191, 191, 0}, {0, 191, 191}, {0, 191, 0},
                           {191, 0, 191},   {191, 0, 0},   {0, 0, 191}};
    for (int i = 0; i < 7; ++i) {
        const int x = (2 * i + 1) * 640 / 14;
        EXPECT_EQ(test::pixelsUnlike(frame, QRect(x - 10, 100, 20, 100), bars[i], 24), 0) << "bar " << i;
    }

    int frames = 0;
    QObject::connect(&feed, &CameraFeed::capturedImageChanged, [&] { ++frames; });
    QElapsedTimer timer;
    timer.start();
    test::waitUntil([] { return false; }, 1500);
    const double rate = frames * 1000.0 / static_cast<double>(timer.elapsed());
    EXPECT_NEAR(rate, 30, 6);
}

TEST(LavfiCamera, OtherPatternsKeepTheirOwnSize) {
    LavfiCameraBackend backend({{{"lavfi:red", "Red"}, "color=c=red:size=320x240:rate=15"},
                                {{"lavfi:blue", "Blue"}, "color=c=blue:size=160x120:rate=15"}});
    CaptureHub hub;
    CameraFeed feed(backend, hub);
    feed.start(QString("lavfi:blue"));
    ASSERT_TRUE(test::waitUntil([&] { return !feed.capturedImage().isNull(); }));
    EXPECT_EQ(feed.capturedImage().size(), QSize(160, 120));
    EXPECT_EQ(test::pixelsUnlike(feed.capturedImage(), QRect(0, 0, 160, 120), Qt::blue, 6), 0);
}

TEST(LavfiCamera, StaleDeviceIdLeavesThePictureEmpty) {
    LavfiCameraBackend backend;
    CaptureHub hub;
    CameraFeed feed(backend, hub);
    feed.start(QString("/dev/video42"));
    EXPECT_TRUE(feed.deviceId().isEmpty());
    EXPECT_EQ(feed.capture(), nullptr);
    EXPECT_EQ(hub.runningCount(), 0);  // no other camera stands in for it
    test::waitUntil([] { return false; }, 300);
    EXPECT_TRUE(feed.capturedImage().isNull());
}

TEST(LavfiCamera, TwoFeedsOfOneCameraShareItsCapture) {
    LavfiCameraBackend backend;
    CaptureHub hub;
    CameraFeed preview(backend, hub), program(backend, hub);
    preview.start(std::nullopt);
    program.start(QString("lavfi:smptebars"));
    ASSERT_TRUE(test::waitUntil([&] { return !preview.capturedImage().isNull() && !program.capturedImage().isNull(); }));
    EXPECT_EQ(preview.capture().get(), program.capture().get());
    EXPECT_EQ(hub.runningCount(), 1);
    preview.stop();
    program.stop();
    EXPECT_EQ(hub.runningCount(), 0);
}

TEST(V4l2Camera, NoDevicesGiveAnEmptyList) {
    QTemporaryDir empty;
    EXPECT_TRUE(V4l2CameraBackend(empty.path()).cameras().empty());

    // A file that only looks like a device node is not a camera.
    QTemporaryDir fake;
    QFile node(fake.filePath("video0"));
    ASSERT_TRUE(node.open(QIODevice::WriteOnly));
    node.close();
    V4l2CameraBackend backend(fake.path());
    EXPECT_TRUE(backend.cameras().empty());
    auto opened = backend.openCamera(fake.filePath("video0"));
    ASSERT_FALSE(opened.ok());
    EXPECT_EQ(opened.error(), "No camera device found");
}

}  // namespace
}  // namespace orvane
