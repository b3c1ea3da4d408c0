// The program window controller on its own, without a session: it reads the
// cursor switch when it opens a window, drives the camera flag, and lets go
// safely of a window that outlives it.

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

#include "engine/PointerState.h"
#include "engine/ProgramWindowController.h"
#include "engine/VirtualCameraManager.h"
#include "support/FakeWindowLayer.h"
#include "support/LogCapture.h"

namespace orvane {
namespace program_window_controller_test {

using test::FakeProgramWindow;
using test::FakeWindowLayer;
using test::LogCapture;

class ProgramWindowControllerTest : public ::testing::Test {
protected:
    void SetUp() override {
        controller = std::make_unique<ProgramWindowController>(pointer, camera);
        layer = std::make_shared<FakeWindowLayer>();
        controller->setWindowLayer(layer);
    }
    std::shared_ptr<FakeProgramWindow> window(std::size_t index = 0) const { return layer->windows.at(index).lock(); }

    PointerState pointer;
    VirtualCameraManager camera;
    std::unique_ptr<ProgramWindowController> controller;
    std::shared_ptr<FakeWindowLayer> layer;
};

TEST_F(ProgramWindowControllerTest, StartsClosedAtNormalLevel) {
    EXPECT_FALSE(controller->isProgramWindowOpen());
    EXPECT_FALSE(controller->programWindowAlwaysOnTop());
    EXPECT_TRUE(layer->windows.empty());
}

TEST_F(ProgramWindowControllerTest, AsksTheLayerForASixteenByNineWindowRememberedByName) {
    controller->openProgramWindow();
    ASSERT_TRUE(layer->lastOptions);
    EXPECT_EQ(layer->lastOptions->contentWidth, 1280);
    EXPECT_EQ(layer->lastOptions->contentHeight, 720);
    EXPECT_EQ(layer->lastOptions->minimumWidth, 640);
    EXPECT_EQ(layer->lastOptions->minimumHeight, 360);
    EXPECT_EQ(layer->lastOptions->aspectWidth, 16);
    EXPECT_EQ(layer->lastOptions->aspectHeight, 9);
    EXPECT_EQ(layer->lastOptions->title, ProgramWindowController::programWindowTitle);
    EXPECT_EQ(layer->lastOptions->frameName, ProgramWindowController::programWindowFrameName);
}

TEST_F(ProgramWindowControllerTest, TheCursorSwitchCountsAtTheMomentOfOpening) {
    controller->openProgramWindow();
    pointer.setShowCursor(false);  // too late for the open window
    EXPECT_EQ(window()->cursorHidden, 0);
    controller->closeProgramWindow();
    controller->openProgramWindow();
    EXPECT_EQ(window(1)->cursorHidden, 1);
}

TEST_F(ProgramWindowControllerTest, TheCameraFlagFollowsOpenAndCloseButNotTheTitleBar) {
    QSignalSpy running(&camera, &VirtualCameraManager::isRunningChanged);
    QSignalSpy open(controller.get(), &ProgramWindowController::isProgramWindowOpenChanged);
    controller->openProgramWindow();
    EXPECT_TRUE(camera.isRunning());
    window()->closeByUser();
    EXPECT_FALSE(controller->isProgramWindowOpen());
    EXPECT_TRUE(camera.isRunning());
    controller->closeProgramWindow();  // no window left: only the flags
    EXPECT_FALSE(camera.isRunning());
    EXPECT_EQ(running.count(), 2);
    EXPECT_EQ(open.count(), 2);
}

TEST_F(ProgramWindowControllerTest, ThePinNotifiesOnlyWhenItChanges) {
    QSignalSpy pin(controller.get(), &ProgramWindowController::programWindowAlwaysOnTopChanged);
    controller->setProgramWindowAlwaysOnTop(false);
    EXPECT_EQ(pin.count(), 0);
    controller->setProgramWindowAlwaysOnTop(true);
    controller->setProgramWindowAlwaysOnTop(true);
    EXPECT_EQ(pin.count(), 1);
    EXPECT_TRUE(controller->setProperty("programWindowAlwaysOnTop", false));
    EXPECT_EQ(pin.count(), 2);
}

TEST_F(ProgramWindowControllerTest, AWindowClosedAfterTheControllerIsGoneIsHarmless) {
    controller->openProgramWindow();
    std::shared_ptr<FakeProgramWindow> kept = window();
    controller.reset();
    LogCapture log;
    kept->closeByUser();
    QCoreApplication::processEvents();
    EXPECT_TRUE(log.finish().empty());
    EXPECT_EQ(kept->closed, 0);  // going away is not a close by the session
}

TEST_F(ProgramWindowControllerTest, WithoutALayerNothingOpensAndTheCameraStaysOff) {
    controller->setWindowLayer(nullptr);
    LogCapture log;
    controller->openProgramWindow();
    EXPECT_FALSE(controller->isProgramWindowOpen());
    EXPECT_FALSE(camera.isRunning());
    EXPECT_EQ(log.finish(), std::vector<std::string>{"❌ Cannot open the program window: no window system attached"});
}

}  // namespace
}  // namespace orvane
