#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/main_window/ContentView.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace console_quit_tests {

using test::Session;

// Runs the application's event loop until it ends by itself or, failing
// that, for ten seconds; returns its exit code (-1 when it was stopped).
int runUntilQuit() {
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [] { QCoreApplication::exit(-1); });
    guard.start(10000);
    return QApplication::exec();
}

bool anyVisibleWindowBut(const QWidget* root) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w != root && w->isVisible()) return true;
    return false;
}

// The process ends with the console window, whatever else is open.
TEST(ConsoleQuit, ClosingTheConsoleEndsTheApplicationWithThePopOutOpen) {
    Session s;
    ContentView root(*s.streamManager, s.windowManager);
    Preset preset = createPreset("Quit", PresetTemplate::custom);
    s.streamManager->setCurrentPreset(preset);
    s.streamManager->switchToScene(preset.scenes.front());
    s.streamManager->updateLive();
    root.resize(1280, 800);
    root.show();
    s.streamManager->programWindowController().openProgramWindow();
    ASSERT_TRUE(s.streamManager->programWindowController().isProgramWindowOpen());
    ASSERT_TRUE(anyVisibleWindowBut(&root));

    QTimer::singleShot(0, &root, [&root] { root.close(); });
    EXPECT_EQ(runUntilQuit(), 0);
    EXPECT_FALSE(root.isVisible());
}

TEST(ConsoleQuit, ClosingTheConsoleEndsTheApplicationWithNothingElseOpen) {
    Session s;
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    QTimer::singleShot(0, &root, [&root] { root.close(); });
    EXPECT_EQ(runUntilQuit(), 0);
}

}  // namespace
}  // namespace orvane
