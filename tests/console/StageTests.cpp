#include <QApplication>
#include <QEnterEvent>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/SymbolButton.h"
#include "console/program_window/ConsoleWindowLayer.h"
#include "console/stages/CenterContentView.h"
#include "console/stages/ProgramHeader.h"
#include "console/stages/StreamPreviewView.h"
#include "console/stages/UpdateLiveButton.h"
#include "document/PresetTemplates.h"
#include "engine/PerformanceMonitor.h"

namespace orvane {
namespace stage_tests {

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

TEST(ConsoleStages, UpdateLiveEasesIntoItsPressedLookAndBack) {
    Session s;
    UpdateLiveButton button(*s.streamManager);
    button.resize(button.sizeHint());
    button.show();
    QApplication::processEvents();
    // A point of the fill right of the labels, inside the body at every scale.
    const QPoint fillPoint(button.width() - 10 - 6, button.height() / 2);
    const QColor orange = pixelAt(button, fillPoint);
    EXPECT_GT(orange.red(), 200);
    EXPECT_GT(orange.red() - orange.green(), 60);

    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(button.isPressed());
    QVariantAnimation& look = button.pressAnimation();
    EXPECT_EQ(look.duration(), 200);
    EXPECT_EQ(look.easingCurve().type(), QEasingCurve::InOutQuad);
    ASSERT_EQ(look.state(), QAbstractAnimation::Running);
    look.pause();
    look.setCurrentTime(0);
    EXPECT_NEAR(button.pressProgress(), 0.0, 1e-9);
    look.setCurrentTime(100);
    EXPECT_NEAR(button.pressProgress(), 0.5, 1e-6);
    const QColor halfway = pixelAt(button, fillPoint);
    look.setCurrentTime(200);
    EXPECT_NEAR(button.pressProgress(), 1.0, 1e-9);
    const QColor green = pixelAt(button, fillPoint);
    EXPECT_GT(green.green() - green.red(), 60);
    // Halfway, the fill lies between the two colours.
    EXPECT_LT(halfway.red(), orange.red() - 20);
    EXPECT_GT(halfway.red(), green.red() + 20);

    // After 0.3 s the look eases back.
    look.resume();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !button.isPressed(); }, 3000));
    EXPECT_EQ(look.endValue().toDouble(), 0.0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return look.state() == QAbstractAnimation::Stopped; }, 3000));
    EXPECT_NEAR(button.pressProgress(), 0.0, 1e-9);

    // Hovering eases in the same way.
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QApplication::sendEvent(&button, &enter);
    EXPECT_TRUE(button.isHovered());
    EXPECT_EQ(button.hoverAnimation().duration(), 200);
    EXPECT_EQ(button.hoverAnimation().endValue().toDouble(), 1.0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return button.hoverProgress() == 1.0; }, 3000));
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

TEST(ConsoleStages, TheProgramStageFeedsTheFrameRateAndThePreviewDoesNot) {
    Session s;
    s.streamManager->setCurrentPreset(createPreset("Rate", PresetTemplate::custom));
    s.streamManager->updateLive();
    CenterContentView center(*s.streamManager, nullptr);
    center.resize(1200, 500);
    center.show();
    QApplication::processEvents();
    PerformanceMonitor* monitor = s.streamManager->performanceMonitor();
    monitor->start();
    for (int i = 0; i < 5; ++i) center.previewStage()->repaint();
    monitor->updateStats();
    EXPECT_EQ(monitor->fps(), 0);
    for (int i = 0; i < 5; ++i) center.programStage()->repaint();
    monitor->updateStats();
    EXPECT_GE(monitor->fps(), 5);
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
    s.streamManager->programWindowController().openProgramWindow();
    QApplication::processEvents();
    EXPECT_TRUE(header->pinButton()->isVisibleTo(header));
    EXPECT_EQ(header->popOutButton()->text(), QStringLiteral("Close Window"));
    EXPECT_EQ(header->pinButton()->text(), QStringLiteral("Always on Top"));
    center.resize(820, 600);
    QApplication::processEvents();
    ASSERT_LT(header->width(), 500) << header->width();
    EXPECT_EQ(header->popOutButton()->text(), QStringLiteral("Close"));
    EXPECT_EQ(header->pinButton()->text(), QStringLiteral("Pin"));
    s.streamManager->programWindowController().closeProgramWindow();
}

}  // namespace
}  // namespace orvane

#include "composition/TestFrameSource.h"
#include "console/bars/WindowManager.h"
#include "console/stages/CompositionSurface.h"
#include "document/SourceFactory.h"

namespace orvane {
namespace stage_tests {

TEST(ConsoleStages, RepaintAtTheCaptureRateOnlyWhileLiveSourcesShow) {
    Session s;
    TestFrameSource frames;
    Preset preset = createPreset("Live", PresetTemplate::custom);
    StreamingScene live = makeScene("Desk");
    SourceFactory::addScreenSource(live, DisplayChoice{1, "Main Display"});
    frames.setFrame(live.sources.front().id, TestFrameSource::patternFrame(QSize(320, 180), Qt::darkGreen));
    preset.scenes.push_back(live);
    s.streamManager->setCurrentPreset(preset);
    s.streamManager->switchToScene(preset.scenes.front());
    CenterContentView center(*s.streamManager, &frames);
    center.resize(1200, 500);
    center.show();
    QApplication::processEvents();
    QTest::qWait(50);
    EXPECT_FALSE(center.previewStage()->isRepaintingContinuously());

    s.streamManager->switchToScene(live);
    ASSERT_TRUE(QTest::qWaitFor([&] { return center.previewStage()->isRepaintingContinuously(); }, 2000));
    EXPECT_FALSE(center.programStage()->isRepaintingContinuously());
    // The live picture itself is drawn: the pattern's green shows in the box.
    const QRect box = center.previewStage()->pictureBox();
    const QImage shot = center.previewStage()->grab().toImage();
    int green = 0;
    for (int x = box.left(); x < box.right(); x += 4)
        for (int y = box.top(); y < box.bottom(); y += 4) {
            const QColor c = shot.pixelColor(x, y);
            if (c.green() > c.red() + 40 && c.green() > c.blue() + 40) ++green;
        }
    EXPECT_GT(green, 100);

    s.streamManager->switchToScene(preset.scenes.front());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !center.previewStage()->isRepaintingContinuously(); }, 2000));
}

TEST(ConsoleShellWindow, AlwaysOnTopFollowsTheSwitch) {
    test::ensureApplication();
    WindowManager manager;
    QWidget window;
    window.show();
    manager.setupMainWindow(&window);
    QApplication::processEvents();
    EXPECT_EQ(manager.mainWindow(), &window);
    manager.setIsAlwaysOnTop(true);
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window.isVisible());
    manager.setIsAlwaysOnTop(false);
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

}  // namespace
}  // namespace orvane

namespace orvane {
namespace stage_tests {

TEST(ConsoleStages, PageClicksOnAStageReachTheSlides) {
    Session s;
    Preset preset = createPreset("Deck", PresetTemplate::custom);
    StreamingScene& scene = preset.scenes.front();
    SourceFactory::addSlidesSource(scene);
    auto& deck = *scene.sources.front().configuration.slidesResource;
    Slide second = deck.slides.front();
    second.id = Uuid::generate();
    second.title = "Second";
    second.order = 1;
    deck.slides.push_back(second);
    s.streamManager->setCurrentPreset(preset);
    s.streamManager->switchToScene(scene);
    CenterContentView center(*s.streamManager, nullptr);
    center.resize(1200, 500);
    center.show();
    QApplication::processEvents();
    StreamPreviewView* stage = center.previewStage();
    const Source& source = s.streamManager->activeScene()->sources.front();
    ASSERT_EQ(stage->surface().slideIndex(source), 0);

    // Somewhere along the bottom of the slide sits the "next" button.
    const QRect box = stage->pictureBox();
    bool turned = false;
    for (int y = box.bottom() - 2; y > box.top() + box.height() * 3 / 4 && !turned; y -= 3)
        for (int x = box.left() + box.width() / 2; x < box.right() && !turned; x += 3) {
            QTest::mouseClick(stage, Qt::LeftButton, {}, QPoint(x, y));
            turned = stage->surface().slideIndex(source) == 1;
        }
    EXPECT_TRUE(turned);
}

}  // namespace
}  // namespace orvane
