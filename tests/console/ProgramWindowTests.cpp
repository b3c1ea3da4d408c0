#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/program_window/ConsoleWindowLayer.h"
#include "console/program_window/ProgramOutputWindow.h"
#include "console/program_window/VirtualCameraOutputView.h"
#include "console/stages/CenterContentView.h"
#include "console/stages/DrawingOverlayWidget.h"
#include "console/stages/StreamPreviewView.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace program_window_tests {

using test::LogCapture;
using test::Session;

ProgramOutputWindow* openWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<ProgramOutputWindow*>(w); window && window->isVisible()) return window;
    return nullptr;
}

struct PopOut : ::testing::Test {
    Session s;
    std::unique_ptr<CenterContentView> center;

    void SetUp() override {
        Preset preset = createPreset("Pop", PresetTemplate::custom);
        s.streamManager->setCurrentPreset(preset);
        s.streamManager->switchToScene(preset.scenes.front());
        s.streamManager->updateLive();
        s.streamManager->setWindowLayer(std::make_shared<ConsoleWindowLayer>(*s.streamManager, nullptr));
        center = std::make_unique<CenterContentView>(*s.streamManager, nullptr);
        center->resize(1200, 500);
        center->show();
    }
    void TearDown() override {
        ProgramWindowController& window = s.streamManager->programWindowController();
        if (window.isProgramWindowOpen()) window.closeProgramWindow();
        QApplication::processEvents();
    }
    void setHideWhenPopout(bool hide) {
        Preset copy = *s.streamManager->currentPreset();
        copy.hideProgramWhenPopout = hide;
        s.streamManager->setCurrentPreset(copy);
    }
};

TEST_F(PopOut, OpenCloseAndCloseByTheTitleBar) {
    {
        LogCapture log;
        s.streamManager->programWindowController().openProgramWindow();
        const std::string lines = log.text();
        EXPECT_NE(lines.find("🎥 Virtual camera started"), std::string::npos);
        EXPECT_NE(lines.find("📺 Virtual camera window opened"), std::string::npos);
    }
    EXPECT_TRUE(s.streamManager->programWindowController().isProgramWindowOpen());
    ProgramOutputWindow* window = openWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("OrvaneUI - Virtual Camera Output"));
    EXPECT_EQ(window->size(), QSize(1280, 720));
    EXPECT_EQ(window->minimumSize(), QSize(640, 360));

    {
        LogCapture log;
        s.streamManager->programWindowController().closeProgramWindow();
        const std::string lines = log.text();
        EXPECT_NE(lines.find("📺 Virtual camera window closed"), std::string::npos);
        EXPECT_EQ(lines.find("closed by user"), std::string::npos);
    }
    EXPECT_FALSE(s.streamManager->programWindowController().isProgramWindowOpen());
    QApplication::processEvents();
    EXPECT_EQ(openWindow(), nullptr);

    s.streamManager->programWindowController().openProgramWindow();
    window = openWindow();
    ASSERT_NE(window, nullptr);
    {
        LogCapture log;
        window->QWidget::close();  // what the title bar's close button does
        const std::string lines = log.text();
        EXPECT_NE(lines.find("📺 Program window closed by user"), std::string::npos);
    }
    EXPECT_FALSE(s.streamManager->programWindowController().isProgramWindowOpen());
    {
        // Closing by the title bar left the camera running: no second start line.
        LogCapture log;
        s.streamManager->programWindowController().openProgramWindow();
        const std::string lines = log.text();
        EXPECT_EQ(lines.find("🎥 Virtual camera started"), std::string::npos);
        EXPECT_NE(lines.find("📺 Virtual camera window opened"), std::string::npos);
    }
}

TEST_F(PopOut, ProgramStageShowsThePlaceholderWhileHidden) {
    setHideWhenPopout(true);
    EXPECT_FALSE(center->programStage()->isShowingPopOutPlaceholder());
    s.streamManager->programWindowController().openProgramWindow();
    EXPECT_TRUE(center->programStage()->isShowingPopOutPlaceholder());
    s.streamManager->programWindowController().closeProgramWindow();
    EXPECT_FALSE(center->programStage()->isShowingPopOutPlaceholder());

    setHideWhenPopout(false);
    s.streamManager->programWindowController().openProgramWindow();
    EXPECT_FALSE(center->programStage()->isShowingPopOutPlaceholder());
    // Closing by the title bar brings the stage back as well.
    setHideWhenPopout(true);
    EXPECT_TRUE(center->programStage()->isShowingPopOutPlaceholder());
    openWindow()->QWidget::close();
    EXPECT_FALSE(center->programStage()->isShowingPopOutPlaceholder());
}

TEST_F(PopOut, DrawingMadeInThePopOutShowsOnTheProgramStage) {
    setHideWhenPopout(false);
    s.streamManager->programWindowController().openProgramWindow();
    s.streamManager->drawing().toggleDrawingMode();
    QApplication::processEvents();
    ProgramOutputWindow* window = openWindow();
    ASSERT_NE(window, nullptr);
    DrawingOverlayWidget* popOutOverlay = window->outputView()->drawingOverlay();
    ASSERT_TRUE(popOutOverlay->isVisible());
    QTest::mousePress(popOutOverlay, Qt::LeftButton, {}, QPoint(40, 60));
    QTest::mouseMove(popOutOverlay, QPoint(120, 60));
    QTest::mouseRelease(popOutOverlay, Qt::LeftButton, {}, QPoint(200, 60));
    ASSERT_EQ(s.streamManager->drawing().drawingShapes().size(), 1u);

    DrawingOverlayWidget* stageOverlay = center->programStage()->drawingOverlay();
    ASSERT_TRUE(stageOverlay->isVisible());
    const QImage picture = center->programStage()->grab().toImage();
    const QPoint onLine = stageOverlay->mapTo(center->programStage(), QPoint(120, 60));
    const QColor c = picture.pixelColor(onLine);
    EXPECT_GT(c.red(), 200) << c.name().toStdString();
    EXPECT_LT(c.green(), 80) << c.name().toStdString();
}

}  // namespace
}  // namespace orvane

namespace orvane {
namespace program_window_tests {

TEST_F(PopOut, BlankCursorWhenHiddenAndGeometryRemembered) {
    s.streamManager->pointer().setShowCursor(false);
    s.streamManager->programWindowController().openProgramWindow();
    ProgramOutputWindow* window = openWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isCursorHidden());
    EXPECT_EQ(window->cursor().shape(), Qt::BlankCursor);
    window->resize(960, 540);
    QApplication::processEvents();
    s.streamManager->programWindowController().closeProgramWindow();
    QApplication::processEvents();

    s.streamManager->pointer().setShowCursor(true);
    s.streamManager->programWindowController().openProgramWindow();
    window = openWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->isCursorHidden());
    EXPECT_EQ(window->size(), QSize(960, 540));
}

}  // namespace
}  // namespace orvane

namespace orvane {
namespace program_window_tests {

TEST_F(PopOut, SettlesBackToSixteenByNineAfterAResize) {
    s.streamManager->programWindowController().openProgramWindow();
    ProgramOutputWindow* window = openWindow();
    ASSERT_NE(window, nullptr);
    window->resize(1000, 700);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == QSize(1000, 562); }, 2000))
        << window->width() << "x" << window->height();
    window->resize(500, 200);  // below the minimum: held at 640 by 360
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == QSize(640, 360); }, 2000))
        << window->width() << "x" << window->height();
}

}  // namespace
}  // namespace orvane
