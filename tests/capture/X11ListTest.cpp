#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>

#include <unistd.h>

#include "capture/ScreenCaptureManager.h"
#include "capture/ScreenCapturePermissionProbe.h"
#include "capture/WindowCaptureManager.h"
#include "capture/WindowListRules.h"
#include "capture/x11/X11CaptureBackend.h"
#include "support/ChildProcess.h"
#include "support/QStringPrinter.h"
#include "support/ManagerFetch.h"
#include "support/QtTestEnvironment.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace x11_list_test {

::testing::Environment* const qtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtTestEnvironment(true));

QByteArray display() { return test::QtTestEnvironment::instance()->displayServer().displayName(); }

const CaptureWindow* findByTitle(const QList<CaptureWindow>& windows, const QString& title) {
    for (const CaptureWindow& w : windows)
        if (w.title == title) return &w;
    return nullptr;
}

// Waits until the manager lists a window with that title.
bool listsWindow(WindowCaptureManager& manager, const QString& title) {
    return test::waitUntil([&] {
        test::fetchAndWait(manager);
        return findByTitle(manager.availableWindows(), title) != nullptr;
    });
}

TEST(X11Lists, DisplaysAreTheMonitorsWithTheMainOneNamed) {
    X11CaptureBackend backend(display());
    ScreenCaptureManager manager(backend);
    QSignalSpy loading(&manager, &ScreenCaptureManager::isLoadingChanged);
    manager.fetchAvailableDisplays();
    // The listing runs elsewhere; the sheet shows its progress meanwhile.
    EXPECT_TRUE(manager.isLoading());
    EXPECT_TRUE(manager.availableDisplays().isEmpty());
    ASSERT_TRUE(test::waitUntil([&] { return !manager.isLoading(); }));
    EXPECT_EQ(loading.count(), 2);  // on, then off
    EXPECT_TRUE(manager.errorMessage().isNull());
    EXPECT_FALSE(manager.needsPermission());

    const QList<CaptureDisplay> displays = manager.availableDisplays();
    ASSERT_EQ(displays.size(), 2);
    EXPECT_EQ(displays[0].name, "Main Display");
    EXPECT_EQ(displays[0].frame, QRect(0, 0, 960, 1080));
    EXPECT_EQ(displays[0].width, 960);
    EXPECT_EQ(displays[0].height, 1080);
    EXPECT_EQ(displays[0].id & 0x80000000u, 0u);  // the RandR output id
    EXPECT_EQ(displays[1].frame, QRect(960, 0, 960, 1080));
    EXPECT_EQ(displays[1].name, QStringLiteral("Display %1").arg(displays[1].id));
    EXPECT_NE(displays[0].id, displays[1].id);
}

TEST(X11Lists, WindowsOfXtermAndQtWithTitlesOwnersAndBounds) {
    const QString dir = test::QtTestEnvironment::instance()->displayServer().runtimeDir();
    test::ChildProcess xterm;
    ASSERT_TRUE(xterm.start({"xterm", "-T", "Orvane Term", "-geometry", "60x10+40+40"},
                            {{"DISPLAY", display().toStdString()}, {"HOME", dir.toStdString()}}, -1,
                            (dir + "/xterm.log").toStdString()));
    auto qtWindow = test::colourWindow(Qt::yellow, QRect(300, 200, 320, 240), "Orvane Probe Window", true);

    X11CaptureBackend backend(display());
    WindowCaptureManager manager(backend);
    const bool termListed = listsWindow(manager, "Orvane Term");
    if (!termListed) {
        QFile log(dir + "/xterm.log");
        log.open(QIODevice::ReadOnly);
        ADD_FAILURE() << "xterm running: " << (xterm.wait(0) == -1) << ", said: " << log.readAll().toStdString();
        auto raw = backend.windows();
        for (const auto& w : raw.value()) ADD_FAILURE() << w.id << " " << w.title.toStdString();
    }
    ASSERT_TRUE(termListed);
    ASSERT_TRUE(listsWindow(manager, "Orvane Probe Window"));
    const auto windows = manager.availableWindows();

    const CaptureWindow* term = findByTitle(windows, "Orvane Term");
    EXPECT_EQ(term->ownerName, "XTerm");
    EXPECT_EQ(term->displayName(), "XTerm - Orvane Term");
    EXPECT_EQ(term->windowLayer, 0);
    EXPECT_GT(term->bounds.width(), 100);

    const CaptureWindow* probe = findByTitle(windows, "Orvane Probe Window");
    // Qt names the class after the application.
    EXPECT_EQ(probe->ownerName, "orvaneprobe");
    EXPECT_EQ(probe->bounds.size(), QSize(320, 240));
    EXPECT_EQ(probe->id, static_cast<std::uint32_t>(qtWindow->winId()));

    // Plain text order: capitals first, so "XTerm" before "orvaneprobe".
    EXPECT_LT(windows.indexOf(*term), windows.indexOf(*probe));

    // The search spans owner, separator and title.
    const auto found = WindowListRules::search(windows, "term - orvane");
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].id, term->id);
}

TEST(X11Lists, OwnerFallsBackToTheProcessNameThenUnknown) {
    test::X11TestClient client(display());
    client.createWindow({"Pid Owned", {}, static_cast<std::uint32_t>(::getpid()), false, QRect(50, 50, 200, 100)});
    client.createWindow({"Nobody Owns This", {}, std::nullopt, false, QRect(80, 80, 200, 100)});
    const xcb_window_t nameless = client.createWindow({{}, {}, std::nullopt, false, QRect(90, 90, 100, 100)});
    const xcb_window_t dock = client.createWindow({"Panel Dock", "Panel", std::nullopt, true, QRect(0, 0, 960, 30)});

    X11CaptureBackend backend(display());
    WindowCaptureManager manager(backend);
    ASSERT_TRUE(listsWindow(manager, "Pid Owned"));
    ASSERT_TRUE(listsWindow(manager, "Nobody Owns This"));

    QFile comm(QStringLiteral("/proc/self/comm"));
    ASSERT_TRUE(comm.open(QIODevice::ReadOnly));
    const QString processName = QString::fromUtf8(comm.readAll()).trimmed();
    EXPECT_EQ(findByTitle(manager.availableWindows(), "Pid Owned")->ownerName, processName);
    EXPECT_EQ(findByTitle(manager.availableWindows(), "Nobody Owns This")->ownerName, "Unknown");

    // Both are managed windows on the server, but the sheet leaves them out.
    bool sawNameless = false, sawDock = false;
    ASSERT_TRUE(test::waitUntil([&] {
        auto raw = backend.windows();
        for (const ShareableWindow& w : raw.value()) {
            if (w.id == nameless) sawNameless = true;
            if (w.id == dock) {
                sawDock = true;
                EXPECT_NE(w.windowLayer, 0);
            }
        }
        return sawNameless && sawDock;
    }));
    test::fetchAndWait(manager);
    for (const CaptureWindow& w : manager.availableWindows()) {
        EXPECT_NE(w.id, nameless);
        EXPECT_NE(w.id, dock);
    }
}

TEST(X11Lists, ThumbnailsOfADisplayAndAWindow) {
    auto window = test::colourWindow(QColor(200, 40, 160), QRect(400, 300, 240, 180), "Thumbnail Window", true);
    X11CaptureBackend backend(display());
    WindowCaptureManager windows(backend);
    ASSERT_TRUE(listsWindow(windows, "Thumbnail Window"));
    const std::uint32_t id = findByTitle(windows.availableWindows(), "Thumbnail Window")->id;

    std::optional<QImage> thumbnail;
    ASSERT_TRUE(test::waitUntil([&] {
        thumbnail = windows.getWindowThumbnail(id);
        return thumbnail && test::pixelsUnlike(*thumbnail, QRect(100, 80, 40, 20), QColor(200, 40, 160)) == 0;
    }));
    EXPECT_EQ(thumbnail->size(), QSize(240, 180));
    EXPECT_FALSE(windows.getWindowThumbnail(0x7fffff).has_value());

    ScreenCaptureManager screens(backend);
    test::fetchAndWait(screens);
    ASSERT_EQ(screens.availableDisplays().size(), 2);
    const auto shot = screens.getDisplayThumbnail(screens.availableDisplays()[0].id);
    ASSERT_TRUE(shot.has_value());
    EXPECT_EQ(shot->size(), QSize(960, 1080));
    EXPECT_FALSE(screens.getDisplayThumbnail(12345).has_value());
}

TEST(X11Lists, DisplayWiderThan1920GetsAThumbnail1920Wide) {
    // A server of its own with one monitor of 2560 by 1440, left half red
    // and right half blue.
    test::TestDisplayServer wide;
    const QString failure = wide.start(false, false, QSize(2560, 1440));
    ASSERT_TRUE(failure.isEmpty()) << failure.toStdString();
    test::X11TestClient client(wide.displayName());
    client.createWindow({"Red Half", {}, std::nullopt, false, QRect(0, 0, 1280, 1440), Qt::red});
    client.createWindow({"Blue Half", {}, std::nullopt, false, QRect(1280, 0, 1280, 1440), Qt::blue});
    ASSERT_TRUE(test::waitUntil([&] {
        return test::pixelsUnlike(client.screenPixels(QRect(2400, 1300, 100, 100)), QRect(0, 0, 100, 100), Qt::blue) == 0;
    }));

    X11CaptureBackend backend(wide.displayName());
    ScreenCaptureManager screens(backend);
    ASSERT_TRUE(test::fetchAndWait(screens));
    ASSERT_EQ(screens.availableDisplays().size(), 1);
    const CaptureDisplay monitor = screens.availableDisplays()[0];
    EXPECT_EQ(monitor.width, 2560);
    EXPECT_EQ(monitor.height, 1440);

    const auto shot = screens.getDisplayThumbnail(monitor.id);
    ASSERT_TRUE(shot.has_value());
    EXPECT_EQ(shot->size(), QSize(1920, 1080));  // 16:9 like the monitor
    // The whole monitor scaled down, not its first 1920 columns: the colour
    // boundary moves from x 1280 to x 960.
    EXPECT_EQ(test::pixelsUnlike(*shot, QRect(20, 20, 900, 1040), Qt::red, 12), 0);
    EXPECT_EQ(test::pixelsUnlike(*shot, QRect(1000, 20, 900, 1040), Qt::blue, 12), 0);
}

TEST(X11Lists, BringingAWindowToFrontActivatesIt) {
    auto lower = test::colourWindow(Qt::red, QRect(100, 100, 300, 200), "Lower Window", true);
    auto upper = test::colourWindow(Qt::blue, QRect(150, 150, 300, 200), "Upper Window", true);
    X11CaptureBackend backend(display());
    WindowCaptureManager manager(backend);
    ASSERT_TRUE(listsWindow(manager, "Upper Window"));
    test::X11TestClient client(display());
    const auto lowerId = static_cast<xcb_window_t>(lower->winId());
    ASSERT_TRUE(test::waitUntil([&] { return client.activeWindow() == static_cast<xcb_window_t>(upper->winId()); }));

    manager.bringWindowToFront(lowerId);
    EXPECT_TRUE(test::waitUntil([&] { return client.activeWindow() == lowerId; }));
    // Raised too: the overlap now shows red.
    EXPECT_TRUE(test::waitUntil([&] {
        return test::pixelsUnlike(client.screenPixels(QRect(200, 200, 50, 50)), QRect(0, 0, 50, 50), Qt::red) == 0;
    }));
}

TEST(X11Lists, PermissionProbeIsGrantedWhenTheServerAnswers) {
    X11CaptureBackend backend(display());
    EXPECT_EQ(ScreenCapturePermissionProbe(backend).getScreenCapturePermissionStatus(), PermissionStatus::granted);
    X11CaptureBackend nowhere(":4711");
    EXPECT_EQ(ScreenCapturePermissionProbe(nowhere).getScreenCapturePermissionStatus(), PermissionStatus::denied);
    ScreenCaptureManager manager(nowhere);
    ASSERT_TRUE(test::fetchAndWait(manager));
    EXPECT_EQ(manager.errorMessage(), "Error loading displays: Cannot connect to the X server");
    EXPECT_TRUE(manager.availableDisplays().isEmpty());
}

}  // namespace
}  // namespace orvane
