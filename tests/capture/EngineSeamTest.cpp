#include <gtest/gtest.h>

#include "capture/StreamQualitySize.h"
#include "capture/x11/X11WindowRaiser.h"
#include "support/FakeCaptureBackend.h"

namespace orvane {
namespace engine_seam_test {

TEST(EngineSeam, StreamQualityMapsToItsRow) {
    EXPECT_EQ(captureQualityFor(StreamQuality::performance), (CaptureQuality{960, 540, 10}));
    EXPECT_EQ(captureQualityFor(StreamQuality::balanced), (CaptureQuality{1280, 720, 15}));
    EXPECT_EQ(captureQualityFor(StreamQuality::quality), (CaptureQuality{1920, 1080, 30}));
    // The menu says 2160p; the stream stays at 1440 lines.
    EXPECT_EQ(captureQualityFor(StreamQuality::maximum), (CaptureQuality{2560, 1440, 60}));
}

TEST(EngineSeam, WindowRaiserAsksTheBackend) {
    test::FakeCaptureBackend backend;
    X11WindowRaiser raiser(backend);
    WindowRaiser& engineSide = raiser;
    engineSide.bringWindowToFront(0x400015);
    EXPECT_EQ(backend.lastRaised, 0x400015u);
}

}  // namespace
}  // namespace orvane
