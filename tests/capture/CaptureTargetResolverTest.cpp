#include <gtest/gtest.h>

#include "capture/CaptureTargetResolver.h"

namespace orvane {
namespace capture_target_resolver_test {

const CaptureQuality kBalanced = CaptureQuality::forOrdinal(1);

std::vector<CaptureDisplay> twoDisplays() {
    CaptureDisplay main{71, 960, 1080, "Main Display", QRect(0, 0, 960, 1080)};
    CaptureDisplay side{0x80000123u, 960, 1080, "Display 2147483939", QRect(960, 0, 960, 1080)};
    return {main, side};
}

std::vector<ShareableWindow> windows() {
    return {
        {100, "Inbox", QString("Mail"), 0, QRect(50, 60, 800, 600)},
        {101, "Draft", QString("Mail"), 0, QRect(70, 80, 640, 480)},
        {102, "Shell", QString("XTerm"), 0, QRect(0, 0, 500, 300)},
    };
}

Source source(SourceType type) {
    Source s;
    s.type = type;
    return s;
}

TEST(CaptureTargetResolver, StoredScreenIdCapturesThatDisplayAtQualitySize) {
    Source s = source(SourceType::screen);
    s.configuration.screenId = 0x80000123u;
    auto target = CaptureTargetResolver::resolve(s, kBalanced, twoDisplays(), {});
    ASSERT_TRUE(target.ok()) << target.error().toStdString();
    EXPECT_EQ(target.value().kind, CaptureTarget::Kind::display);
    EXPECT_EQ(target.value().id, 0x80000123u);
    EXPECT_EQ(target.value().outputSize, QSize(1280, 720));
    EXPECT_EQ(target.value().framesPerSecond, 15);
    EXPECT_EQ(target.value().cursorRegion, QRect(960, 0, 960, 1080));
}

TEST(CaptureTargetResolver, ScreenWithoutIdTakesTheFirstDisplayAndNeverTheCursor) {
    auto target = CaptureTargetResolver::resolve(source(SourceType::screen), kBalanced, twoDisplays(), {});
    ASSERT_TRUE(target.ok());
    EXPECT_EQ(target.value().id, 71u);
    EXPECT_TRUE(target.value().cursorRegion.isEmpty());
}

TEST(CaptureTargetResolver, StaleScreenIdFailsWithoutFallingBack) {
    Source s = source(SourceType::screen);
    s.configuration.screenId = 9999;
    auto target = CaptureTargetResolver::resolve(s, kBalanced, twoDisplays(), {});
    ASSERT_FALSE(target.ok());
    EXPECT_EQ(target.error(), "No display found");
    EXPECT_EQ(CaptureTargetResolver::resolve(source(SourceType::screen), kBalanced, {}, {}).error(),
              "No display found");
}

TEST(CaptureTargetResolver, WindowByIdUsesTheWindowsOwnSize) {
    Source s = source(SourceType::window);
    s.configuration.windowId = 101;
    auto target = CaptureTargetResolver::resolve(s, CaptureQuality::forOrdinal(0), {}, windows());
    ASSERT_TRUE(target.ok());
    EXPECT_EQ(target.value().id, 101u);
    EXPECT_EQ(target.value().outputSize, QSize(640, 480));
    EXPECT_EQ(target.value().framesPerSecond, 10);
    EXPECT_EQ(target.value().cursorRegion, QRect(70, 80, 640, 480));
}

TEST(CaptureTargetResolver, WindowWithoutIdFails) {
    EXPECT_EQ(CaptureTargetResolver::resolve(source(SourceType::window), kBalanced, {}, windows()).error(),
              "No window ID provided");
}

TEST(CaptureTargetResolver, StaleIdFallsBackToOwnerAndTitleAtQualitySize) {
    Source s = source(SourceType::window);
    s.configuration.windowId = 555;
    s.configuration.windowOwner = "Mail";
    s.configuration.windowTitle = "Draft";
    auto target = CaptureTargetResolver::resolve(s, kBalanced, {}, windows());
    ASSERT_TRUE(target.ok());
    EXPECT_EQ(target.value().id, 101u);
    EXPECT_EQ(target.value().outputSize, QSize(1280, 720));
    EXPECT_TRUE(target.value().cursorRegion.isEmpty());
}

TEST(CaptureTargetResolver, StaleIdWithChangedTitleTakesTheOwnersFirstWindow) {
    Source s = source(SourceType::window);
    s.configuration.windowId = 555;
    s.configuration.windowOwner = "Mail";
    s.configuration.windowTitle = "Renamed";
    auto target = CaptureTargetResolver::resolve(s, kBalanced, {}, windows());
    ASSERT_TRUE(target.ok());
    EXPECT_EQ(target.value().id, 100u);
    EXPECT_EQ(target.value().outputSize, QSize(1280, 720));
}

TEST(CaptureTargetResolver, StaleIdWithoutAMatchingOwnerFails) {
    Source s = source(SourceType::window);
    s.configuration.windowId = 555;
    EXPECT_EQ(CaptureTargetResolver::resolve(s, kBalanced, {}, windows()).error(), "Window not found");
    s.configuration.windowOwner = "Browser";
    s.configuration.windowTitle = "Inbox";
    EXPECT_EQ(CaptureTargetResolver::resolve(s, kBalanced, {}, windows()).error(), "Window not found");
}

TEST(CaptureTargetResolver, CameraAndContentAreNotScreenCaptures) {
    for (SourceType type : {SourceType::camera, SourceType::content})
        EXPECT_EQ(CaptureTargetResolver::resolve(source(type), kBalanced, twoDisplays(), windows()).error(),
                  "Unsupported source type");
}

TEST(CaptureTargetResolver, KeysSeparateTargetsThatStreamDifferently) {
    Source s = source(SourceType::screen);
    s.configuration.screenId = 71;
    const auto withCursor = CaptureTargetResolver::resolve(s, kBalanced, twoDisplays(), {}).value();
    const auto withoutCursor =
        CaptureTargetResolver::resolve(source(SourceType::screen), kBalanced, twoDisplays(), {}).value();
    const auto faster = CaptureTargetResolver::resolve(s, CaptureQuality::forOrdinal(2), twoDisplays(), {}).value();
    EXPECT_EQ(withCursor.key(), CaptureTargetResolver::resolve(s, kBalanced, twoDisplays(), {}).value().key());
    EXPECT_NE(withCursor.key(), withoutCursor.key());
    EXPECT_NE(withCursor.key(), faster.key());
}

}  // namespace
}  // namespace orvane
