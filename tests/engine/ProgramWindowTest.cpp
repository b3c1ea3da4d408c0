// The pop-out program window as the session drives it, with the virtual
// camera flag that follows it.

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

#include "engine/StreamManager.h"
#include "engine/VirtualCameraManager.h"
#include "support/FakeWindowLayer.h"
#include "support/LogCapture.h"
#include "support/SessionTest.h"

namespace orvane {
namespace program_window_test {

using test::FakeProgramWindow;
using test::FakeWindowLayer;
using test::LogCapture;
using test::SessionTest;

class ProgramWindowTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        layer = std::make_shared<FakeWindowLayer>();
        session->setWindowLayer(layer);
    }
    std::shared_ptr<FakeProgramWindow> window(std::size_t index = 0) const { return layer->windows.at(index).lock(); }
    bool cameraRunning() const { return session->virtualCameraManager().isRunning(); }

    std::shared_ptr<FakeWindowLayer> layer;
};

TEST_F(ProgramWindowTest, OpeningCreatesTheWindowStartsTheCameraAndLogs) {
    QSignalSpy open(&session->programWindowController(), &ProgramWindowController::isProgramWindowOpenChanged);
    LogCapture log;
    session->programWindowController().openProgramWindow();

    ASSERT_EQ(layer->windows.size(), 1u);
    const auto& options = *layer->lastOptions;
    EXPECT_EQ(options.contentWidth, 1280);
    EXPECT_EQ(options.contentHeight, 720);
    EXPECT_EQ(options.title, "OrvaneUI - Virtual Camera Output");
    EXPECT_EQ(options.title.find("Program Output"), std::string::npos);
    EXPECT_EQ(options.frameName, "VirtualCameraWindow");
    EXPECT_EQ(options.minimumWidth, 640);
    EXPECT_EQ(options.minimumHeight, 360);
    EXPECT_EQ(options.aspectWidth, 16);
    EXPECT_EQ(options.aspectHeight, 9);

    EXPECT_EQ(window()->broughtToFront, 1);
    EXPECT_TRUE(window()->levels.empty());  // normal level whatever the pin says
    EXPECT_TRUE(session->programWindowController().isProgramWindowOpen());
    EXPECT_EQ(open.count(), 1);
    EXPECT_TRUE(cameraRunning());
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"🎥 Virtual camera started",
                                                            "🖱️ Mouse tracking disabled for performance",
                                                            "📺 Virtual camera window opened"}));
}

TEST_F(ProgramWindowTest, NewWindowIgnoresTheAlwaysOnTopFlag) {
    session->programWindowController().setProgramWindowAlwaysOnTop(true);
    session->programWindowController().openProgramWindow();
    EXPECT_TRUE(window()->levels.empty());
}

TEST_F(ProgramWindowTest, OpeningTwiceBringsTheSameWindowForwardSilently) {
    session->programWindowController().openProgramWindow();
    LogCapture log;
    session->programWindowController().openProgramWindow();
    EXPECT_TRUE(log.finish().empty());
    EXPECT_EQ(layer->windows.size(), 1u);
    EXPECT_EQ(window()->broughtToFront, 2);
}

TEST_F(ProgramWindowTest, CursorStaysVisibleWithShowCursorOn) {
    session->programWindowController().openProgramWindow();
    EXPECT_EQ(window()->cursorHidden, 0);
}

TEST_F(ProgramWindowTest, CursorIsHiddenOnceWithShowCursorOff) {
    session->pointer().setShowCursor(false);
    session->programWindowController().openProgramWindow();
    session->programWindowController().openProgramWindow();
    EXPECT_EQ(window()->cursorHidden, 1);
}

TEST_F(ProgramWindowTest, ClosingStopsTheCameraAndClosesTheWindow) {
    session->programWindowController().openProgramWindow();
    const auto opened = window();
    LogCapture log;
    session->programWindowController().closeProgramWindow();
    EXPECT_EQ(opened->closed, 1);
    EXPECT_FALSE(session->programWindowController().isProgramWindowOpen());
    EXPECT_FALSE(cameraRunning());
    EXPECT_EQ(log.sessionLines(),
              (std::vector<std::string>{"🎥 Virtual camera stopped", "📺 Virtual camera window closed"}));
}

TEST_F(ProgramWindowTest, ClosingWithNoWindowOnlyLogs) {
    LogCapture log;
    session->programWindowController().closeProgramWindow();
    EXPECT_EQ(log.sessionLines(), std::vector<std::string>{"📺 Virtual camera window closed"});
}

TEST_F(ProgramWindowTest, ClosingByTheTitleBarKeepsTheCameraRunning) {
    session->programWindowController().openProgramWindow();
    std::weak_ptr<FakeProgramWindow> closing = window();
    {
        LogCapture log;
        window()->closeByUser();
        EXPECT_EQ(log.sessionLines(), std::vector<std::string>{"📺 Program window closed by user"});
    }
    EXPECT_FALSE(session->programWindowController().isProgramWindowOpen());
    EXPECT_TRUE(cameraRunning());
    // Released only after its close handler has returned.
    EXPECT_FALSE(closing.expired());
    QCoreApplication::processEvents();
    EXPECT_TRUE(closing.expired());

    LogCapture log;
    session->programWindowController().openProgramWindow();
    EXPECT_EQ(layer->windows.size(), 2u);
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"🖱️ Mouse tracking disabled for performance",
                                                            "📺 Virtual camera window opened"}));
}

TEST_F(ProgramWindowTest, CloseOfAnyOtherWindowIsIgnored) {
    session->programWindowController().openProgramWindow();
    FakeProgramWindow stranger;
    LogCapture log;
    session->programWindowController().windowWillClose(&stranger);
    session->programWindowController().windowWillClose(nullptr);
    EXPECT_TRUE(log.finish().empty());
    EXPECT_TRUE(session->programWindowController().isProgramWindowOpen());
}

TEST_F(ProgramWindowTest, LevelFollowsThePinOnlyWhenAsked) {
    LogCapture log;
    session->programWindowController().setProgramWindowAlwaysOnTop(true);
    session->programWindowController().updateProgramWindowLevel();  // no window: nothing
    EXPECT_TRUE(log.sessionLines().empty());
}

TEST_F(ProgramWindowTest, LevelUpdatesLogTheirEnding) {
    session->programWindowController().openProgramWindow();
    LogCapture log;
    session->programWindowController().setProgramWindowAlwaysOnTop(true);
    session->programWindowController().updateProgramWindowLevel();
    session->programWindowController().setProgramWindowAlwaysOnTop(false);
    session->programWindowController().updateProgramWindowLevel();
    EXPECT_EQ(window()->levels,
              (std::vector<ProgramWindow::Level>{ProgramWindow::Level::floating, ProgramWindow::Level::normal}));
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"📺 Program window level updated: Always on Top",
                                                            "📺 Program window level updated: Normal"}));
}

TEST_F(ProgramWindowTest, PinSetWhileClosedAppliesAtTheNextCall) {
    session->programWindowController().setProgramWindowAlwaysOnTop(true);
    session->programWindowController().updateProgramWindowLevel();
    session->programWindowController().openProgramWindow();
    EXPECT_TRUE(session->programWindowController().programWindowAlwaysOnTop());
    session->programWindowController().updateProgramWindowLevel();
    EXPECT_EQ(window()->levels, std::vector<ProgramWindow::Level>{ProgramWindow::Level::floating});
}

TEST(ProgramWindowNoLayer, OpeningWithoutAWindowSystemFailsClearly) {
    test::TestHome home;
    auto session = home.startSession();
    LogCapture log;
    session->programWindowController().openProgramWindow();
    EXPECT_FALSE(session->programWindowController().isProgramWindowOpen());
    EXPECT_FALSE(session->virtualCameraManager().isRunning());
    EXPECT_EQ(log.sessionLines(),
              std::vector<std::string>{"❌ Cannot open the program window: no window system attached"});
}

}  // namespace
}  // namespace orvane
