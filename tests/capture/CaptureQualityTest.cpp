#include <gtest/gtest.h>

#include "capture/CaptureError.h"
#include "capture/CaptureQuality.h"

namespace orvane {
namespace capture_quality_test {

TEST(CaptureQuality, RowsBySettingOrdinal) {
    const CaptureQuality expected[] = {{960, 540, 10}, {1280, 720, 15}, {1920, 1080, 30}, {2560, 1440, 60}};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(CaptureQuality::forOrdinal(i), expected[i]) << i;
    EXPECT_EQ(CaptureQuality::forOrdinal(7), expected[1]);
    EXPECT_EQ(CaptureQuality::forOrdinal(-1), expected[1]);
}

TEST(CaptureError, Descriptions) {
    EXPECT_EQ(errorDescription(CaptureError::noDisplayFound), "No display found");
    EXPECT_EQ(errorDescription(CaptureError::noWindowIdProvided), "No window ID provided");
    EXPECT_EQ(errorDescription(CaptureError::windowNotFound), "Window not found");
    EXPECT_EQ(errorDescription(CaptureError::unsupportedSourceType), "Unsupported source type");
}

}  // namespace
}  // namespace orvane
