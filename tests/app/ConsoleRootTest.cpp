// The composition root's wiring, on the offscreen platform and with no
// display server at all: the subsystems it owns see the session, the console
// it builds is handed them, and it goes down cleanly with windows open.

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

#include "ConsoleRoot.h"
#include "capture/SourceCaptures.h"
#include "console/bars/BottomBarView.h"
#include "console/controls/SymbolButton.h"
#include "console/main_window/ContentView.h"
#include "console/main_window/MainStreamingView.h"
#include "console/sidebar/RemoteTabView.h"
#include "console/sidebar/RightSidebarView.h"
#include "document/PresetStorage.h"
#include "document/PresetTemplates.h"
#include "engine/StreamManager.h"
#include "remote/WebServerManager.h"
#include "support/StdoutCapture.h"
#include "teleprompter/TeleprompterManager.h"

namespace orvane {
namespace console_root_test {

void ensureApplication() {
    if (qApp) return;
    // Settings and window geometries go to a home of the test's own; no
    // display server is reachable, which the capture layer takes as a state.
    static QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qunsetenv("DISPLAY");
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "app_root_tests";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("OrvaneUI"));
    QApplication::setApplicationName(QStringLiteral("OrvaneUI-tests"));
}

Source screenSource(const char* name) {
    Source source;
    source.type = SourceType::screen;
    source.name = name;
    source.configuration.screenId = 1;
    return source;
}

struct RootFixture : ::testing::Test {
    void SetUp() override {
        ensureApplication();
        storage = std::make_unique<PresetStorage>(dir.filePath(QStringLiteral("presets")).toStdString());
        Preset preset = createPreset("Show", PresetTemplate::custom);
        preset.teleprompter = TeleprompterConfig{};
        preset.teleprompter->enabled = true;
        preset.teleprompter->text = "Good morning.";
        storage->savePreset(preset);
        root = std::make_unique<ConsoleRoot>(
            *storage, std::make_unique<QSettings>(dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat));
        ASSERT_TRUE(root->session().currentPreset());
    }
    void TearDown() override {
        root.reset();
        storage.reset();
    }

    QTemporaryDir dir;
    std::unique_ptr<PresetStorage> storage;
    std::unique_ptr<ConsoleRoot> root;
};

TEST_F(RootFixture, TheRemoteServerReadsTheSessionThroughTheBridge) {
    ASSERT_TRUE(root->webServer().session());
    EXPECT_FALSE(root->webServer().session()->isBlurModeActive);
    root->session().toggleBlurMode();
    ASSERT_TRUE(root->webServer().session());
    EXPECT_TRUE(root->webServer().session()->isBlurModeActive);
    root->session().drawing().setIsDrawingModeEnabled(true);
    EXPECT_TRUE(root->webServer().session()->isDrawingModeEnabled);
}

TEST_F(RootFixture, CapturesRunOnlyForTheScenesOnScreen) {
    StreamManager& session = root->session();
    const Source shown = screenSource("Shown");
    const Source gone = screenSource("Gone");
    StreamingScene scene = *session.activeScene();
    scene.sources = {shown};
    session.updateScene(scene);  // preview and program share the scene's id until the first go-live

    // A view asks for both pictures; each gets a capture.
    root->captures().latestFrame(shown);
    root->captures().latestFrame(gone);
    EXPECT_EQ(root->captures().activeCount(), 2);

    // The next change of the scene on screen lets go of the one nothing shows.
    session.updateLive();
    EXPECT_EQ(root->captures().activeCount(), 1);
    session.setActiveScene(makeScene("Empty"));
    session.setProgramScene(makeScene("Also empty"));
    EXPECT_EQ(root->captures().activeCount(), 0);
}

TEST_F(RootFixture, TheConsoleIsHandedTheServerAndTheTeleprompter) {
    ContentView& console = root->console();
    EXPECT_EQ(&root->console(), &console);  // made once
    MainStreamingView& main = *console.mainStreamingView();

    // The teleprompter button of the bottom bar drives the root's teleprompter.
    console.show();
    SymbolButton* teleprompter = main.bottomBar()->teleprompterButton();
    ASSERT_TRUE(teleprompter->isVisibleTo(main.bottomBar()));
    QTest::mouseClick(teleprompter, Qt::LeftButton);
    EXPECT_TRUE(root->teleprompter().isTeleprompterWindowOpen());

    // The remote tab drives the root's server.
    WebServerManager& server = root->webServer();
    server.setServerPort(0);
    RemoteTabView* tab = main.rightSidebar()->remoteTab();
    tab->setServerEnabled(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.isServerRunning(); }, 5000));
    tab->setServerEnabled(false);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.isServerRunning(); }, 5000));
}

TEST_F(RootFixture, GoesDownWithTheWindowsOpenAndTheServerRunning) {
    root->console().show();
    root->teleprompter().openTeleprompterWindow();
    root->session().programWindowController().openProgramWindow();
    ASSERT_TRUE(root->session().programWindowController().isProgramWindowOpen());
    root->webServer().setServerPort(0);
    root->webServer().startServer();
    ASSERT_TRUE(QTest::qWaitFor([&] { return root->webServer().isServerRunning(); }, 5000));

    test::StdoutCapture log;
    root.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const std::string lines = log.text();
    EXPECT_NE(lines.find("📜 Teleprompter window closed"), std::string::npos) << lines;
    for (QWidget* window : QApplication::topLevelWidgets()) EXPECT_FALSE(window->isVisible()) << window->windowTitle().toStdString();
}

}  // namespace
}  // namespace orvane
