#include <gtest/gtest.h>

#include "capture/CaptureTargetResolver.h"
#include "capture/x11/X11CaptureBackend.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"
#include "support/RandrMonitors.h"
#include "support/TestDisplayServer.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace x11_display_id_test {

std::vector<CaptureDisplay> listedDisplays(const QByteArray& display) {
    X11CaptureBackend backend(display);
    auto listed = backend.displays();
    EXPECT_TRUE(listed.ok()) << (listed.ok() ? std::string() : listed.error().toStdString());
    return listed.ok() ? listed.value() : std::vector<CaptureDisplay>{};
}

Source screenSource(std::uint32_t id) {
    Source source;
    source.type = SourceType::screen;
    source.configuration.screenId = id;
    return source;
}

// Everything but the top 100 rows, where the pointer sits.
const QRect kAwayFromThePointer(0, 100, 960, 980);

TEST(X11DisplayIds, SplitMonitorsKeepTheirOwnIdsAcrossServerRestartsAndCaptureTheirOwnHalf) {
    std::vector<CaptureDisplay> before;
    xcb_atom_t rightAtomBefore = XCB_NONE;
    {
        test::TestDisplayServer server;
        ASSERT_EQ(server.start(false, false), QString());
        const test::RandrMonitors randr(server.displayName());
        ASSERT_EQ(randr.splitLeftRight(), QString());
        before = listedDisplays(server.displayName());
        ASSERT_EQ(before.size(), 2u);
        EXPECT_EQ(before[0].frame, QRect(0, 0, 960, 1080));
        EXPECT_EQ(before[1].frame, QRect(960, 0, 960, 1080));
        // Alone on its output: the output's id, as presets already hold it.
        const std::uint32_t output = randr.outputId("screen");
        ASSERT_NE(output, 0u);
        EXPECT_EQ(before[0].id, output);
        EXPECT_NE(before[1].id, before[0].id);
        EXPECT_EQ(before[1].name, QStringLiteral("Display %1").arg(before[1].id));
        rightAtomBefore = randr.atom("Right", false);
        ASSERT_NE(rightAtomBefore, static_cast<xcb_atom_t>(XCB_NONE));
        server.stop();
    }

    test::TestDisplayServer server;
    ASSERT_EQ(server.start(false, false), QString());
    const QByteArray display = server.displayName();
    const test::RandrMonitors randr(display);
    // Unsplit, the screen is the one monitor of its output, with its id.
    const std::vector<CaptureDisplay> whole = listedDisplays(display);
    ASSERT_EQ(whole.size(), 1u);
    EXPECT_EQ(whole[0].id, randr.outputId("screen"));
    EXPECT_EQ(whole[0].name, "Main Display");
    EXPECT_EQ(whole[0].frame, QRect(0, 0, 1920, 1080));

    // Other clients got there first this time, so every atom interned from
    // now on has another value than before.
    for (int i = 0; i < 25; ++i) randr.atom("_ORVANE_EARLIER_CLIENT_" + QByteArray::number(i), true);
    ASSERT_EQ(randr.splitLeftRight(), QString());
    ASSERT_NE(randr.atom("Right", false), rightAtomBefore);

    const std::vector<CaptureDisplay> after = listedDisplays(display);
    ASSERT_EQ(after.size(), 2u);
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(after[i].id, before[i].id) << i;
        EXPECT_EQ(after[i].name, before[i].name) << i;
        EXPECT_EQ(after[i].frame, before[i].frame) << i;
    }

    // Each half painted a colour of its own; no window manager moves them.
    test::X11TestClient client(display);
    client.createWindow({"Left Paint", {}, std::nullopt, false, QRect(0, 0, 960, 1080), Qt::red});
    client.createWindow({"Right Paint", {}, std::nullopt, false, QRect(960, 0, 960, 1080), Qt::blue});
    client.warpPointer(10, 10);
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage screen = client.screenPixels(QRect(0, 100, 1920, 980));
        return test::pixelsUnlike(screen, QRect(0, 0, 960, 980), Qt::red) == 0 &&
               test::pixelsUnlike(screen, QRect(960, 0, 960, 980), Qt::blue) == 0;
    }));

    X11CaptureBackend backend(display);
    const std::vector<std::pair<CaptureDisplay, QColor>> halves{{after[0], Qt::red}, {after[1], Qt::blue}};
    for (const auto& [half, colour] : halves) {
        SCOPED_TRACE(half.name.toStdString());
        // A scene's source finds its monitor and the cursor's region by the id.
        auto target = CaptureTargetResolver::resolve(screenSource(half.id), CaptureQuality{960, 1080, 30}, after, {});
        ASSERT_TRUE(target.ok());
        EXPECT_EQ(target.value().id, half.id);
        EXPECT_EQ(target.value().cursorRegion, half.frame);

        auto stream = backend.openStream(target.value());
        ASSERT_TRUE(stream.ok()) << stream.error().toStdString();
        auto frame = stream.value()->grabFrame();
        ASSERT_TRUE(frame.ok()) << frame.error().toStdString();
        ASSERT_EQ(frame.value().image.size(), QSize(960, 1080));
        EXPECT_EQ(test::pixelsUnlike(frame.value().image, kAwayFromThePointer, colour), 0);

        const auto thumbnail = backend.displayThumbnail(half.id);
        ASSERT_TRUE(thumbnail.has_value());
        ASSERT_EQ(thumbnail->size(), QSize(960, 1080));
        EXPECT_EQ(test::pixelsUnlike(*thumbnail, kAwayFromThePointer, colour), 0);
    }
}

}  // namespace
}  // namespace orvane
