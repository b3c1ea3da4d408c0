#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/CenterContentView.h"
#include "console/ConsoleWindowLayer.h"
#include "console/ProgramHeader.h"
#include "console/StreamPreviewView.h"
#include "console/SymbolButton.h"
#include "console/UpdateLiveButton.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace {

using test::Session;

QColor pixelAt(QWidget& widget, QPoint at) { return widget.grab().toImage().pixelColor(at); }

TEST(ConsoleStages, MockContentUntilTheFirstUpdateLiveThenTheSceneGoesOnAir) {
    Session s;
    Preset preset = createPreset("Stages", PresetTemplate::custom);
    s.streamManager->setCurrentPreset(preset);
    s.streamManager->switchToScene(preset.scenes.front());
    CenterContentView center(*s.streamManager, nullptr);
    center.resize(1200, 500);
    center.show();
    QApplication::processEvents();
    EXPECT_TRUE(center.programStage()->isShowingMockContent());
    EXPECT_EQ(center.programHeader()->subtitle(), QStringLiteral("No scene"));
    // A scene with no sources shows the placeholder picture on a stage.
    EXPECT_TRUE(center.previewStage()->isShowingMockContent());

    UpdateLiveButton* button = center.previewStage()->updateLiveButton();
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(button->isPressed());
    ASSERT_TRUE(s.streamManager->programScene());
    EXPECT_EQ(center.programHeader()->subtitle(), QStringLiteral("Scene 1"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !button->isPressed(); }, 2000));
}

TEST(ConsoleStages, ProgramStageCarriesTheRedBorder) {
    Session s;
    CenterContentView center(*s.streamManager, nullptr);
    center.resize(1200, 500);
    center.show();
    QApplication::processEvents();
    StreamPreviewView* program = center.programStage();
    const QRect box = program->pictureBox();
    const QColor edge = pixelAt(*program, QPoint(box.center().x(), box.top()));
    EXPECT_GT(edge.red(), 100);
    EXPECT_LT(edge.green(), 60);
    StreamPreviewView* preview = center.previewStage();
    const QRect previewBox = preview->pictureBox();
    const QColor previewEdge = pixelAt(*preview, QPoint(previewBox.center().x(), previewBox.top()));
    EXPECT_LT(previewEdge.red() - previewEdge.green(), 30);
}

TEST(ConsoleStages, HeaderLabelsFollowTheWidth) {
    Session s;
    s.streamManager->setCurrentPreset(createPreset("Header", PresetTemplate::custom));
    s.streamManager->setWindowLayer(std::make_shared<ConsoleWindowLayer>(*s.streamManager, nullptr));
    CenterContentView center(*s.streamManager, nullptr);
    center.resize(1600, 600);
    center.show();
    QApplication::processEvents();
    ProgramHeader* header = center.programHeader();
    EXPECT_EQ(header->popOutButton()->text(), QStringLiteral("Pop Out"));
    EXPECT_FALSE(header->pinButton()->isVisibleTo(header));
    s.streamManager->openProgramWindow();
    QApplication::processEvents();
    EXPECT_TRUE(header->pinButton()->isVisibleTo(header));
    EXPECT_EQ(header->popOutButton()->text(), QStringLiteral("Close Window"));
    EXPECT_EQ(header->pinButton()->text(), QStringLiteral("Always on Top"));
    center.resize(820, 600);
    QApplication::processEvents();
    ASSERT_LT(header->width(), 500) << header->width();
    EXPECT_EQ(header->popOutButton()->text(), QStringLiteral("Close"));
    EXPECT_EQ(header->pinButton()->text(), QStringLiteral("Pin"));
    s.streamManager->closeProgramWindow();
}

}  // namespace
}  // namespace orvane
