#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "capture/CaptureHub.h"
#include "capture/ScreenCaptureViewModel.h"
#include "capture/WindowCaptureManager.h"
#include "capture/x11/X11CaptureBackend.h"
#include "support/QStringPrinter.h"
#include "support/ManagerFetch.h"
#include "support/QtTestEnvironment.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace x11_frame_rate_test {

::testing::Environment* const qtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtTestEnvironment(true, false));

QByteArray display() { return test::QtTestEnvironment::instance()->displayServer().displayName(); }

// Frames that reach the main thread per second, measured over a while once
// the first one is there. A loaded machine delivers fewer, never more: the
// tests bound the rate tightly from above (a capture that ignores its
// quality's rate fails) and loosely from below (one that stalls fails).
// The capture benchmark measures the rate at 30 fps on a quiet machine.
double deliveredRate(ScreenCaptureViewModel& model, int measureMs) {
    if (!test::waitUntil([&] { return !model.capturedImage().isNull(); })) return 0;
    int frames = 0;
    QObject::connect(&model, &ScreenCaptureViewModel::capturedImageChanged, [&] { ++frames; });
    QElapsedTimer timer;
    timer.start();
    test::waitUntil([] { return false; }, measureMs);
    return frames * 1000.0 / static_cast<double>(timer.elapsed());
}

class X11FrameRateTest : public ::testing::TestWithParam<int> {};

TEST_P(X11FrameRateTest, DisplayFramesArriveAtTheQualityRate) {
    X11CaptureBackend backend(display());
    CaptureHub hub;
    auto listed = backend.displays();
    ASSERT_TRUE(listed.ok());
    const CaptureQuality quality = CaptureQuality::forOrdinal(GetParam());
    Source source;
    source.type = SourceType::screen;
    source.configuration.screenId = listed.value()[0].id;
    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(source, quality);
    const double rate = deliveredRate(model, 2000);
    EXPECT_LE(rate, quality.framesPerSecond * 1.2);
    EXPECT_GE(rate, quality.framesPerSecond * 0.3);
    EXPECT_EQ(model.capturedImage().size(), quality.size());
}

// The whole 1920x1080 screen is one display here: the quality rows scale
// it down, at 1080 lines pass it through untouched, and at the top row
// scale it up to 2560x1440 at sixty frames a second.

INSTANTIATE_TEST_SUITE_P(Qualities, X11FrameRateTest, ::testing::Values(0, 1, 2, 3));

TEST(X11FrameRate, WindowAtTheTopQualityRunsAtSixtyInItsOwnSize) {
    auto window = test::colourWindow(Qt::cyan, QRect(100, 100, 640, 360), "Rate Window", true);
    X11CaptureBackend backend(display());
    CaptureHub hub;
    WindowCaptureManager manager(backend);
    std::uint32_t id = 0;
    ASSERT_TRUE(test::waitUntil([&] {
        test::fetchAndWait(manager);
        for (const auto& w : manager.availableWindows())
            if (w.title == "Rate Window") id = w.id;
        return id != 0;
    }));
    Source source;
    source.type = SourceType::window;
    source.configuration.windowId = id;
    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(source, CaptureQuality::forOrdinal(3));
    const double rate = deliveredRate(model, 2000);
    EXPECT_LE(rate, 72);
    EXPECT_GE(rate, 18);
    EXPECT_EQ(model.capturedImage().size(), QSize(640, 360));
}

}  // namespace
}  // namespace orvane
