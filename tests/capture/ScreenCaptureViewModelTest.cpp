#include <gtest/gtest.h>

#include <QSignalSpy>

#include "capture/CaptureHub.h"
#include "capture/ScreenCaptureViewModel.h"
#include "support/FakeCaptureBackend.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"

namespace orvane {
namespace screen_capture_view_model_test {

class ScreenCaptureViewModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        backend.displayList = {{71, 960, 1080, "Main Display", QRect(0, 0, 960, 1080)},
                               {72, 960, 1080, "Display 72", QRect(960, 0, 960, 1080)}};
        backend.windowList = {{500, "Inbox", QString("Mail"), 0, QRect(20, 30, 400, 300)}};
    }

    Source screen(std::optional<std::uint32_t> id) {
        Source s;
        s.type = SourceType::screen;
        s.configuration.screenId = id;
        return s;
    }

    test::FakeCaptureBackend backend;
    CaptureHub hub;
};

TEST_F(ScreenCaptureViewModelTest, GoesFromStartingToRunningToIdle) {
    ScreenCaptureViewModel model(backend, hub);
    EXPECT_FALSE(model.isCapturing());
    EXPECT_TRUE(model.errorMessage().isNull());
    backend.openDelayMs = 300;  // long enough to see the starting state

    model.startCapture(screen(72), CaptureQuality::forOrdinal(0));
    EXPECT_TRUE(model.isCapturing());
    EXPECT_TRUE(model.capturedImage().isNull());  // starting
    EXPECT_EQ(model.windowFrame(), QRect(960, 0, 960, 1080));

    ASSERT_TRUE(test::waitUntil([&] { return !model.capturedImage().isNull(); }));
    EXPECT_TRUE(model.isCapturing());
    EXPECT_EQ(model.capturedImage().size(), QSize(960, 540));
    EXPECT_EQ(model.capturedImage().pixelColor(5, 5), QColor(Qt::green));

    model.stopCapture();
    EXPECT_FALSE(model.isCapturing());
    EXPECT_TRUE(model.capturedImage().isNull());
    EXPECT_EQ(backend.openStreamCount(), 0);
}

TEST_F(ScreenCaptureViewModelTest, StaleScreenIdFails) {
    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(screen(9999), CaptureQuality::forOrdinal(1));
    EXPECT_FALSE(model.isCapturing());
    EXPECT_EQ(model.errorMessage(), "Capture error: No display found");
    EXPECT_EQ(backend.opened(), 0);
}

TEST_F(ScreenCaptureViewModelTest, ContentAndCameraAreUnsupported) {
    ScreenCaptureViewModel model(backend, hub);
    Source content;
    content.type = SourceType::content;
    model.startCapture(content, CaptureQuality::forOrdinal(1));
    EXPECT_EQ(model.errorMessage(), "Capture error: Unsupported source type");
    Source camera;
    camera.type = SourceType::camera;
    model.startCapture(camera, CaptureQuality::forOrdinal(1));
    EXPECT_EQ(model.errorMessage(), "Capture error: Unsupported source type");
    EXPECT_FALSE(model.isCapturing());
}

TEST_F(ScreenCaptureViewModelTest, ListingAndOpeningFailuresBecomeMessages) {
    ScreenCaptureViewModel model(backend, hub);
    backend.listingError = "Cannot connect to the X server";
    model.startCapture(screen(71), CaptureQuality::forOrdinal(1));
    EXPECT_EQ(model.errorMessage(), "Capture error: Cannot connect to the X server");

    backend.listingError.clear();
    backend.openError = "The X server refused the grab";
    model.startCapture(screen(71), CaptureQuality::forOrdinal(1));
    EXPECT_TRUE(model.isCapturing());
    EXPECT_TRUE(model.errorMessage().isNull());
    ASSERT_TRUE(test::waitUntil([&] { return !model.errorMessage().isNull(); }));
    EXPECT_EQ(model.errorMessage(), "Capture error: The X server refused the grab");
    EXPECT_FALSE(model.isCapturing());
}

TEST_F(ScreenCaptureViewModelTest, StopOnAnIdleModelChangesNothing) {
    ScreenCaptureViewModel model(backend, hub);
    QSignalSpy capturing(&model, &ScreenCaptureViewModel::isCapturingChanged);
    model.stopCapture();
    EXPECT_FALSE(model.isCapturing());
    EXPECT_TRUE(model.capturedImage().isNull());
    EXPECT_EQ(capturing.count(), 0);
}

TEST_F(ScreenCaptureViewModelTest, StopWhileStartingClearsAndNothingArrivesLater) {
    ScreenCaptureViewModel model(backend, hub);
    backend.openDelayMs = 300;
    model.startCapture(screen(71), CaptureQuality::forOrdinal(2));
    ASSERT_TRUE(model.isCapturing());
    ASSERT_TRUE(model.capturedImage().isNull());  // still opening on its thread
    ASSERT_EQ(hub.runningCount(), 1);

    QSignalSpy images(&model, &ScreenCaptureViewModel::capturedImageChanged);
    QSignalSpy errors(&model, &ScreenCaptureViewModel::errorMessageChanged);
    model.stopCapture();
    EXPECT_FALSE(model.isCapturing());
    EXPECT_TRUE(model.capturedImage().isNull());
    EXPECT_EQ(hub.runningCount(), 0);

    // Well past the open delay and many frame intervals at 30 a second:
    // the stream that finished opening after the stop never shows.
    test::waitUntil([] { return false; }, 800);
    EXPECT_EQ(images.count(), 0);
    EXPECT_EQ(errors.count(), 0);
    EXPECT_TRUE(model.capturedImage().isNull());
    EXPECT_FALSE(model.isCapturing());
    EXPECT_TRUE(model.errorMessage().isNull());
    EXPECT_EQ(backend.openStreamCount(), 0);
    EXPECT_TRUE(model.capture() == nullptr);
}

TEST_F(ScreenCaptureViewModelTest, ViewsOfOneTargetShareOneStream) {
    ScreenCaptureViewModel preview(backend, hub), program(backend, hub);
    preview.startCapture(screen(71), CaptureQuality::forOrdinal(2));
    program.startCapture(screen(71), CaptureQuality::forOrdinal(2));
    ASSERT_TRUE(test::waitUntil([&] { return !preview.capturedImage().isNull() && !program.capturedImage().isNull(); }));
    EXPECT_EQ(backend.openStreamCount(), 1);
    EXPECT_EQ(backend.opened(), 1);
    EXPECT_EQ(preview.capture().get(), program.capture().get());

    // A view of the same display at another quality is another stream.
    ScreenCaptureViewModel other(backend, hub);
    other.startCapture(screen(71), CaptureQuality::forOrdinal(0));
    ASSERT_TRUE(test::waitUntil([&] { return !other.capturedImage().isNull(); }));
    EXPECT_EQ(backend.openStreamCount(), 2);

    preview.stopCapture();
    EXPECT_EQ(backend.openStreamCount(), 2);
    program.stopCapture();
    other.stopCapture();
    EXPECT_EQ(backend.openStreamCount(), 0);
}

TEST_F(ScreenCaptureViewModelTest, WindowFoundByNameHasNoCursorRegion) {
    ScreenCaptureViewModel model(backend, hub);
    Source s;
    s.type = SourceType::window;
    s.configuration.windowId = 1;
    s.configuration.windowOwner = "Mail";
    model.startCapture(s, CaptureQuality::forOrdinal(1));
    ASSERT_TRUE(test::waitUntil([&] { return !model.capturedImage().isNull(); }));
    EXPECT_EQ(model.capturedImage().size(), QSize(1280, 720));
    EXPECT_TRUE(model.windowFrame().isEmpty());
}

}  // namespace
}  // namespace orvane
