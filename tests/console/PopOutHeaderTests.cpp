#include <QApplication>
#include <QPainter>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/SymbolButton.h"
#include "console/program_window/ConsoleWindowLayer.h"
#include "console/program_window/FloatingDrawingControls.h"
#include "console/program_window/ProgramOutputWindow.h"
#include "console/program_window/VirtualCameraOutputView.h"
#include "console/stages/CenterContentView.h"
#include "console/stages/DrawingOverlayWidget.h"
#include "console/stages/ProgramHeader.h"
#include "console/stages/StagePlaceholders.h"
#include "console/stages/StreamPreviewView.h"
#include "document/PresetTemplates.h"
#include "engine/VirtualCameraManager.h"

namespace orvane {
namespace pop_out_header_tests {

using test::LogCapture;
using test::Session;

ProgramOutputWindow* visibleProgramWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<ProgramOutputWindow*>(w); window && window->isVisible()) return window;
    return nullptr;
}

// The console's program stage with the pop-out window reachable from its header.
struct PopOutFromHeader : ::testing::Test {
    Session s;
    std::unique_ptr<CenterContentView> center;

    void SetUp() override {
        s.streamManager->setWindowLayer(std::make_shared<ConsoleWindowLayer>(*s.streamManager, nullptr));
        center = std::make_unique<CenterContentView>(*s.streamManager, nullptr);
        center->resize(1600, 600);
        center->show();
        QApplication::processEvents();
    }
    void TearDown() override {
        if (s.streamManager->programWindowController().isProgramWindowOpen()) s.streamManager->programWindowController().closeProgramWindow();
        QApplication::processEvents();
    }
    void goLive(Preset preset) {
        s.streamManager->setCurrentPreset(preset);
        s.streamManager->switchToScene(preset.scenes.front());
        s.streamManager->updateLive();
    }
    void clickPopOut() {
        QTest::mouseClick(center->programHeader()->popOutButton(), Qt::LeftButton);
        QApplication::processEvents();
    }
};

TEST_F(PopOutFromHeader, TheHeaderButtonOpensAndClosesTheWindow) {
    goLive(createPreset("Button", PresetTemplate::custom));
    ProgramHeader* header = center->programHeader();
    {
        LogCapture log;
        clickPopOut();
        const std::string lines = log.text();
        EXPECT_NE(lines.find("🎥 Virtual camera started"), std::string::npos) << lines;
        EXPECT_NE(lines.find("📺 Virtual camera window opened"), std::string::npos) << lines;
    }
    ASSERT_TRUE(s.streamManager->programWindowController().isProgramWindowOpen());
    ASSERT_NE(visibleProgramWindow(), nullptr);
    EXPECT_TRUE(s.streamManager->virtualCameraManager().isRunning());
    EXPECT_EQ(header->popOutButton()->text(), QStringLiteral("Close Window"));

    {
        LogCapture log;
        clickPopOut();
        const std::string lines = log.text();
        EXPECT_NE(lines.find("🎥 Virtual camera stopped"), std::string::npos) << lines;
        EXPECT_NE(lines.find("📺 Virtual camera window closed"), std::string::npos) << lines;
        // The session closed it, not the user by the title bar.
        EXPECT_EQ(lines.find("closed by user"), std::string::npos) << lines;
    }
    EXPECT_FALSE(s.streamManager->programWindowController().isProgramWindowOpen());
    EXPECT_FALSE(s.streamManager->virtualCameraManager().isRunning());
    EXPECT_EQ(visibleProgramWindow(), nullptr);
    EXPECT_EQ(header->popOutButton()->text(), QStringLiteral("Pop Out"));
    EXPECT_FALSE(header->pinButton()->isVisibleTo(header));
}

TEST_F(PopOutFromHeader, TheShortCloseButtonClosesTheWindowToo) {
    goLive(createPreset("Narrow", PresetTemplate::custom));
    clickPopOut();
    ASSERT_TRUE(s.streamManager->programWindowController().isProgramWindowOpen());
    center->resize(820, 600);
    QApplication::processEvents();
    ASSERT_EQ(center->programHeader()->popOutButton()->text(), QStringLiteral("Close"));
    {
        LogCapture log;
        clickPopOut();
        const std::string lines = log.text();
        EXPECT_NE(lines.find("📺 Virtual camera window closed"), std::string::npos) << lines;
    }
    EXPECT_FALSE(s.streamManager->programWindowController().isProgramWindowOpen());
    EXPECT_EQ(visibleProgramWindow(), nullptr);
    // Opening again after a close by the session starts the camera once more.
    LogCapture log;
    clickPopOut();
    EXPECT_NE(log.text().find("🎥 Virtual camera started"), std::string::npos);
    EXPECT_TRUE(s.streamManager->programWindowController().isProgramWindowOpen());
}

TEST_F(PopOutFromHeader, DrawingMadeOnTheProgramStageShowsInThePopOut) {
    Preset preset = createPreset("Ink", PresetTemplate::custom);
    preset.hideProgramWhenPopout = false;
    goLive(preset);
    clickPopOut();
    s.streamManager->drawing().toggleDrawingMode();
    QApplication::processEvents();
    DrawingOverlayWidget* stageOverlay = center->programStage()->drawingOverlay();
    ASSERT_TRUE(stageOverlay->isVisible());
    QTest::mousePress(stageOverlay, Qt::LeftButton, {}, QPoint(40, 60));
    QTest::mouseMove(stageOverlay, QPoint(120, 60));
    QTest::mouseRelease(stageOverlay, Qt::LeftButton, {}, QPoint(200, 60));
    ASSERT_EQ(s.streamManager->drawing().drawingShapes().size(), 1u);

    ProgramOutputWindow* window = visibleProgramWindow();
    ASSERT_NE(window, nullptr);
    DrawingOverlayWidget* popOutOverlay = window->outputView()->drawingOverlay();
    ASSERT_TRUE(popOutOverlay->isVisible());
    // The shape keeps the points it was drawn at, in the stage's overlay, and
    // the window draws it at the same points: look for the red line.
    const QImage picture = window->outputView()->grab().toImage();
    const QRect stageBox = stageOverlay->rect();
    const QRect windowBox = popOutOverlay->rect();
    int red = 0;
    for (int y = 0; y < windowBox.height(); ++y)
        for (int x = 0; x < windowBox.width(); x += 2) {
            const QColor c = picture.pixelColor(popOutOverlay->mapTo(window->outputView(), QPoint(x, y)));
            if (c.red() > 200 && c.green() < 80 && c.blue() < 80) ++red;
        }
    EXPECT_GT(red, 20) << "stage overlay " << stageBox.width() << "x" << stageBox.height() << ", window overlay "
                       << windowBox.width() << "x" << windowBox.height();

    // Without the drawing the window shows no such line.
    s.streamManager->drawing().toggleDrawingMode();
    QApplication::processEvents();
    const QImage without = window->outputView()->grab().toImage();
    int redWithout = 0;
    for (int y = 0; y < without.height(); ++y)
        for (int x = 0; x < without.width(); x += 2) {
            const QColor c = without.pixelColor(x, y);
            if (c.red() > 200 && c.green() < 80 && c.blue() < 80) ++redWithout;
        }
    EXPECT_LT(redWithout, red);
}

// Rows of the image holding near-white pixels and rows holding the grey of
// the second line (and nothing brighter), within the given box.
struct TextRows {
    int firstWhite = -1, lastWhite = -1, firstGrey = -1, lastGrey = -1;
};
TextRows textRows(const QImage& image, const QRect& box) {
    TextRows rows;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        int brightest = 0;
        for (int x = box.left(); x <= box.right(); ++x) brightest = std::max(brightest, image.pixelColor(x, y).lightness());
        if (brightest >= 235) {
            if (rows.firstWhite < 0) rows.firstWhite = y;
            rows.lastWhite = y;
        } else if (brightest >= 120 && brightest <= 165) {
            if (rows.firstGrey < 0) rows.firstGrey = y;
            rows.lastGrey = y;
        }
    }
    return rows;
}

TEST_F(PopOutFromHeader, WithNothingOnAirTheWindowSaysNoProgramAboveCameraReady) {
    Preset preset = createPreset("Idle", PresetTemplate::custom);
    s.streamManager->setCurrentPreset(preset);
    s.streamManager->switchToScene(preset.scenes.front());
    ASSERT_FALSE(s.streamManager->programScene());
    clickPopOut();
    ProgramOutputWindow* window = visibleProgramWindow();
    ASSERT_NE(window, nullptr);
    VirtualCameraOutputView* view = window->outputView();
    const QImage shown = view->grab().toImage();
    const QRect box = view->pictureBox();

    // The window's picture is the placeholder column, pixel for pixel.
    QImage expected(shown.size(), shown.format());
    expected.setDevicePixelRatio(shown.devicePixelRatio());
    expected.fill(Qt::black);
    {
        QPainter p(&expected);
        StagePlaceholders::paintNoProgram(p, QRectF(box));
    }
    // The floating drawing button, when shown, sits over the picture: leave it out.
    QImage compared = shown;
    if (view->floatingControls()->isVisible()) {
        QPainter p(&compared);
        QPainter q(&expected);
        const QRect controls = view->floatingControls()->geometry();
        p.fillRect(controls, Qt::black);
        q.fillRect(controls, Qt::black);
    }
    EXPECT_EQ(compared, expected);

    // And the column reads white ("No Program Active") above grey ("Virtual Camera Ready").
    const TextRows rows = textRows(compared, box);
    ASSERT_GE(rows.firstWhite, 0);
    ASSERT_GE(rows.firstGrey, 0);
    EXPECT_LT(rows.lastWhite, rows.firstGrey);
    EXPECT_GT(rows.firstWhite, box.top() + box.height() / 3);
    EXPECT_LT(rows.lastGrey, box.bottom() - box.height() / 3);

    // Once a scene is on air the placeholder is gone.
    s.streamManager->updateLive();
    QApplication::processEvents();
    EXPECT_NE(view->grab().toImage(), expected);
}

TEST_F(PopOutFromHeader, WithoutAPresetTheProgramHasNoBrandingOrProgressBar) {
    Preset plain = createPreset("Plain", PresetTemplate::custom);
    plain.sceneTransition.type = TransitionType::none;
    Preset branded = plain;
    BrandingConfig branding;
    branding.enabled = true;
    branding.text = "ON AIR BRAND";
    branding.textSize = 40;
    branding.backgroundColor = CodableColor{1, 0, 1, 1};
    branding.showBackground = true;
    branded.branding = branding;
    ProgressBarConfig bar;
    bar.enabled = true;
    bar.opacity = 1.0;
    bar.backgroundColor = CodableColor{0, 1, 1, 1};
    bar.steps.push_back(ProgressStep{Uuid::generate(), "Intro", true, 0});
    bar.steps.push_back(ProgressStep{Uuid::generate(), "Outro", false, 1});
    branded.progressBar = bar;

    goLive(branded);
    clickPopOut();
    ProgramOutputWindow* window = visibleProgramWindow();
    ASSERT_NE(window, nullptr);
    VirtualCameraOutputView* view = window->outputView();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !s.streamManager->isTransitioning(); }, 3000));
    QApplication::processEvents();
    const QImage withPreset = view->grab().toImage();

    s.streamManager->setCurrentPreset(plain);
    QApplication::processEvents();
    const QImage plainPreset = view->grab().toImage();

    s.streamManager->setCurrentPreset(std::nullopt);
    QApplication::processEvents();
    ASSERT_TRUE(s.streamManager->programScene());
    const QImage noPreset = view->grab().toImage();

    // The plate and the bar change the picture; with no preset neither is drawn.
    EXPECT_NE(withPreset, plainPreset);
    EXPECT_EQ(noPreset, plainPreset);
    auto count = [](const QImage& image, auto match) {
        int n = 0;
        for (int y = 0; y < image.height(); y += 2)
            for (int x = 0; x < image.width(); x += 2)
                if (match(image.pixelColor(x, y))) ++n;
        return n;
    };
    auto magenta = [](const QColor& c) { return c.red() > 220 && c.blue() > 220 && c.green() < 40; };
    auto cyan = [](const QColor& c) { return c.green() > 220 && c.blue() > 220 && c.red() < 40; };
    EXPECT_GT(count(withPreset, magenta), 20);
    EXPECT_GT(count(withPreset, cyan), 20);
    EXPECT_EQ(count(noPreset, magenta), 0);
    EXPECT_EQ(count(noPreset, cyan), 0);
}

}  // namespace
}  // namespace orvane
