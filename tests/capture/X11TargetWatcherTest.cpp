#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include <time.h>

#include <algorithm>
#include <memory>

#include "capture/x11/X11CaptureBackend.h"
#include "capture/x11/X11TargetWatcher.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"
#include "support/RandrMonitors.h"
#include "support/TestDisplayServer.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace x11_target_watcher_test {

// A watcher made while $DISPLAY says this (unset when null); the variable
// is put back afterwards.
std::unique_ptr<X11TargetWatcher> watcherWithDisplay(const char* display) {
    const bool had = qEnvironmentVariableIsSet("DISPLAY");
    const QByteArray saved = qgetenv("DISPLAY");
    if (display)
        qputenv("DISPLAY", display);
    else
        qunsetenv("DISPLAY");
    auto watcher = std::make_unique<X11TargetWatcher>();
    if (had)
        qputenv("DISPLAY", saved);
    else
        qunsetenv("DISPLAY");
    return watcher;
}

double processCpuSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

bool listsWindow(const QByteArray& display, xcb_window_t window) {
    X11CaptureBackend backend(display);
    auto windows = backend.windows();
    return windows.ok() && std::any_of(windows.value().begin(), windows.value().end(),
                                       [&](const ShareableWindow& w) { return w.id == window; });
}

// Long enough for a wrong announcement to arrive; used only where nothing
// may happen, since there is no event to wait for.
constexpr int kQuietMs = 300;

TEST(X11TargetWatcher, MonitorsSetOrDeletedAreAnnouncedOnceABurst) {
    test::TestDisplayServer server;
    ASSERT_EQ(server.start(false, false), QString());
    const test::RandrMonitors randr(server.displayName());
    auto watcher = watcherWithDisplay(server.displayName().constData());
    ASSERT_TRUE(watcher->isActive());
    QSignalSpy changed(watcher.get(), &X11TargetWatcher::targetsChanged);

    // Root properties other than the client list are not news.
    randr.touchRootProperty("_ORVANE_UNWATCHED");
    QTest::qWait(kQuietMs);
    EXPECT_EQ(changed.count(), 0);

    // Two monitors set while the event loop is held up: one announcement.
    ASSERT_EQ(randr.splitLeftRight(), QString());
    ASSERT_TRUE(test::waitUntil([&] { return changed.count() > 0; }, 10000));
    QTest::qWait(kQuietMs);
    EXPECT_EQ(changed.count(), 1);

    changed.clear();
    ASSERT_EQ(randr.xrandr({"--delmonitor", "Right"}), QString());
    EXPECT_TRUE(test::waitUntil([&] { return changed.count() > 0; }, 10000));
    EXPECT_TRUE(watcher->isActive());
}

TEST(X11TargetWatcher, WindowsOpenedAndClosedAreAnnounced) {
    test::TestDisplayServer server;
    ASSERT_EQ(server.start(true, false), QString());
    const QByteArray display = server.displayName();
    auto watcher = watcherWithDisplay(display.constData());
    ASSERT_TRUE(watcher->isActive());
    QSignalSpy changed(watcher.get(), &X11TargetWatcher::targetsChanged);

    auto client = std::make_unique<test::X11TestClient>(display);
    const xcb_window_t window = client->createWindow({"Watched Window", "Watched", std::nullopt, false});
    // The window manager lists the window, and the watcher tells.
    ASSERT_TRUE(test::waitUntil([&] { return listsWindow(display, window); }, 10000));
    EXPECT_TRUE(test::waitUntil([&] { return changed.count() > 0; }, 10000));

    changed.clear();
    client.reset();  // its windows go with its connection
    ASSERT_TRUE(test::waitUntil([&] { return !listsWindow(display, window); }, 10000));
    EXPECT_TRUE(test::waitUntil([&] { return changed.count() > 0; }, 10000));
}

TEST(X11TargetWatcher, AServerThatDiesLeavesItInactiveAndIdle) {
    test::TestDisplayServer server;
    ASSERT_EQ(server.start(false, false), QString());
    auto watcher = watcherWithDisplay(server.displayName().constData());
    ASSERT_TRUE(watcher->isActive());

    server.stop();  // the server is killed under it
    ASSERT_TRUE(test::waitUntil([&] { return !watcher->isActive(); }, 10000));

    // A socket left watched after the server hung up reads as ready for
    // ever: the loop would spin and burn the whole second.
    const double before = processCpuSeconds();
    QTest::qWait(1000);
    EXPECT_LT(processCpuSeconds() - before, 0.2);
    EXPECT_FALSE(watcher->isActive());
}

TEST(X11TargetWatcher, WithoutAServerItIsInactiveAndSilent) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    auto unset = watcherWithDisplay(nullptr);
    // No server has this number: Xvfb picks its numbers from 0 up.
    auto unreachable = watcherWithDisplay(":64999");
    QSignalSpy changed(unreachable.get(), &X11TargetWatcher::targetsChanged);
    QTest::qWait(kQuietMs);
    const std::string logged = testing::internal::GetCapturedStdout();
    const std::string complained = testing::internal::GetCapturedStderr();
    EXPECT_FALSE(unset->isActive());
    EXPECT_FALSE(unreachable->isActive());
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(logged, "");
    EXPECT_EQ(complained, "");
}

}  // namespace
}  // namespace orvane
