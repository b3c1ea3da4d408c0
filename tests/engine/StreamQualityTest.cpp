#include <gtest/gtest.h>

#include "engine/DrawingButtonPosition.h"
#include "engine/StreamQuality.h"

namespace orvane {
namespace stream_quality_test {

TEST(StreamQuality, CasesTitlesAndSubtitlesInMenuOrder) {
    const auto cases = allCases<StreamQuality>();
    ASSERT_EQ(cases.size(), 4u);
    const std::pair<std::string_view, std::string_view> expected[] = {
        {"Performance", "540p • 10fps • Low CPU"},
        {"Balanced", "720p • 15fps • Medium CPU"},
        {"Quality", "1080p • 30fps • High CPU"},
        {"Maximum", "2160p • 60fps • Maximum CPU"},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(toString(cases[i]), expected[i].first);
        EXPECT_EQ(subtitle(cases[i]), expected[i].second);
        EXPECT_EQ(enumFromString<StreamQuality>(expected[i].first), cases[i]);
    }
}

TEST(DrawingButtonPosition, LabelsInOrder) {
    const auto cases = allCases<DrawingButtonPosition>();
    const std::string_view labels[] = {"Top Left",     "Top Right",   "Bottom Left",
                                       "Bottom Right", "Center Left", "Center Right"};
    ASSERT_EQ(cases.size(), std::size(labels));
    for (std::size_t i = 0; i < cases.size(); ++i) EXPECT_EQ(toString(cases[i]), labels[i]);
}

}  // namespace
}  // namespace orvane
