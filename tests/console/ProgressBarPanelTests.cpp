#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ColorSwatchButton.h"
#include "console/controls/CaptionedSlider.h"
#include "console/controls/SegmentedButton.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/sidebar/AddStepView.h"
#include "console/sidebar/PresetTabView.h"
#include "console/sidebar/ProgressBarConfigView.h"
#include "console/sidebar/ProgressBarSection.h"
#include "console/sidebar/RightSidebarView.h"
#include "console/sidebar/StepRowView.h"
#include "console/stages/CenterContentView.h"
#include "console/stages/StreamPreviewView.h"
#include "console/stages/UpdateLiveButton.h"
#include "document/PresetTemplates.h"
#include "document/SourceFactory.h"

namespace orvane {
namespace progress_bar_panel_tests {

using test::Session;

struct ProgressFixture {
    Session s;
    Preset preset = createPreset("Steps", PresetTemplate::streaming);
    std::unique_ptr<RightSidebarView> sidebar;

    explicit ProgressFixture(const std::vector<std::string>& steps = {}, bool enabled = true) {
        if (!steps.empty() || enabled) {
            ProgressBarConfig config;
            config.enabled = enabled;
            for (std::size_t i = 0; i < steps.size(); ++i) {
                ProgressStep step;
                step.title = steps[i];
                step.order = int(i);
                config.steps.push_back(step);
            }
            preset.progressBar = config;
        }
        s.storage->savePreset(preset);
        s.streamManager->setCurrentPreset(preset);
        sidebar = std::make_unique<RightSidebarView>(*s.streamManager);
        sidebar->setSelectedTab(ConfigTab::preset);
        sidebar->resize(280, 1400);
        sidebar->show();
    }
    ProgressBarSection* section() const { return sidebar->presetTab()->progressBar(); }
    Preset stored() const {
        for (const Preset& p : s.storage->loadPresets())
            if (p.id == preset.id) return p;
        ADD_FAILURE() << "preset file missing";
        return {};
    }
    std::vector<std::string> storedTitlesInOrder() const {
        std::vector<ProgressStep> steps = stored().progressBar->steps;
        std::stable_sort(steps.begin(), steps.end(), [](auto& a, auto& b) { return a.order < b.order; });
        std::vector<std::string> titles;
        for (auto& st : steps) titles.push_back(st.title);
        return titles;
    }
};

// Lets rebuilt rows show and closed sheets go, as the event loop would
// between two clicks.
void settle() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

std::vector<QString> rowTitles(const ProgressBarConfigView& sheet) {
    std::vector<QString> titles;
    for (StepRowView* row : sheet.stepRows()) titles.push_back(row->titleLabel()->text());
    return titles;
}

TEST(ProgressBarPanel, TheSwitchCreatesTheDefaultsWhenThePresetHasNone) {
    Session s;
    Preset preset = createPreset("Plain", PresetTemplate::streaming);
    s.storage->savePreset(preset);
    s.streamManager->setCurrentPreset(preset);
    RightSidebarView sidebar(*s.streamManager);
    sidebar.setSelectedTab(ConfigTab::preset);
    sidebar.show();
    ProgressBarSection* p = sidebar.presetTab()->progressBar();
    EXPECT_FALSE(p->enabledSwitch()->isChecked());
    EXPECT_FALSE(p->stepsCaption()->isVisible());
    QTest::mouseClick(p->enabledSwitch(), Qt::LeftButton);
    const Preset stored = s.storage->loadPresets().front();
    ASSERT_TRUE(stored.progressBar);
    ProgressBarConfig expected;
    expected.enabled = true;
    EXPECT_EQ(*stored.progressBar, expected);
    EXPECT_TRUE(p->stepsCaption()->isVisible());
    EXPECT_EQ(p->stepsCaption()->text(), QStringLiteral("Steps (0)"));
    QTest::mouseClick(p->enabledSwitch(), Qt::LeftButton);
    EXPECT_FALSE(s.storage->loadPresets().front().progressBar->enabled);
}

TEST(ProgressBarPanel, TickingAStepStoresItTellsTheOverlayAndSaysSo) {
    ProgressFixture f({"Intro", "Demo", "Questions"});
    ProgressBarSection* p = f.section();
    EXPECT_EQ(p->stepsCaption()->text(), QStringLiteral("Steps (3)"));
    ASSERT_EQ(p->stepButtons().size(), 3u);
    EXPECT_EQ(p->stepButtons()[1]->text(), QStringLiteral("Demo"));
    EXPECT_EQ(p->stepButtons()[1]->symbol(), "circle");

    QSignalSpy redraw(f.s.streamManager.get(), &StreamManager::progressBarUpdateTimestampChanged);
    QSignalSpy outward(f.s.streamManager.get(), &StreamManager::streamManagerUpdate);
    test::LogCapture log;
    QTest::mouseClick(p->stepButtons()[1], Qt::LeftButton);
    const std::string text = log.text();
    EXPECT_NE(text.find("✅ Progress step toggled: Demo = true"), std::string::npos) << text;
    EXPECT_EQ(redraw.count(), 1);
    EXPECT_GE(outward.count(), 1);
    EXPECT_TRUE(f.stored().progressBar->steps[1].isCompleted);
    EXPECT_TRUE(f.s.streamManager->currentPreset()->progressBar->steps[1].isCompleted);
    ASSERT_EQ(p->stepButtons().size(), 3u);
    EXPECT_EQ(p->stepButtons()[1]->symbol(), "checkmark.circle.fill");
    EXPECT_TRUE(p->stepButtons()[1]->isChecked());

    test::LogCapture again;
    QTest::mouseClick(p->stepButtons()[1], Qt::LeftButton);
    EXPECT_NE(again.text().find("✅ Progress step toggled: Demo = false"), std::string::npos);
    EXPECT_FALSE(f.stored().progressBar->steps[1].isCompleted);
}

TEST(ProgressBarPanel, StepChangesCopyTheCurrentPresetChangeAssignAndSave) {
    ProgressFixture f({"Intro", "Demo"});
    // Changes made to the session since the panels were built are kept.
    Preset renamed = *f.s.streamManager->currentPreset();
    renamed.name = "Renamed Elsewhere";
    renamed.hideProgramWhenPopout = !renamed.hideProgramWhenPopout;
    f.s.streamManager->setCurrentPreset(renamed);
    QTest::mouseClick(f.section()->stepButtons()[0], Qt::LeftButton);
    ProgressBarConfigView sheet(*f.s.streamManager);
    sheet.moveStepDown(f.s.streamManager->currentPreset()->progressBar->steps[0].id);
    const Preset& current = *f.s.streamManager->currentPreset();
    EXPECT_EQ(current.name, "Renamed Elsewhere");
    EXPECT_TRUE(current.progressBar->steps[0].isCompleted);
    EXPECT_EQ(current.progressBar->steps[0].order, 1);
    const Preset stored = f.stored();
    EXPECT_EQ(stored.name, "Renamed Elsewhere");
    EXPECT_EQ(stored.hideProgramWhenPopout, renamed.hideProgramWhenPopout);
    EXPECT_EQ(stored.progressBar, current.progressBar);
}

TEST(ProgressBarPanel, TheSectionListsTheStepsByOrder) {
    ProgressFixture f({"A", "B", "C"});
    Preset p = *f.s.streamManager->currentPreset();
    p.progressBar->steps[0].order = 2;
    p.progressBar->steps[2].order = 0;
    f.s.streamManager->setCurrentPreset(p);
    ASSERT_EQ(f.section()->stepButtons().size(), 3u);
    EXPECT_EQ(f.section()->stepButtons()[0]->text(), QStringLiteral("C"));
    EXPECT_EQ(f.section()->stepButtons()[2]->text(), QStringLiteral("A"));
}

TEST(ProgressBarPanel, TheSheetAddsReordersTicksAndDeletesSteps) {
    ProgressFixture f;
    QSignalSpy redraw(f.s.streamManager.get(), &StreamManager::progressBarUpdateTimestampChanged);
    ProgressBarConfigView* sheet = f.section()->showProgressBarConfig();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->windowTitle(), QStringLiteral("Progress Bar Configuration"));
    EXPECT_TRUE(sheet->emptyLabel()->isVisible());
    EXPECT_EQ(sheet->emptyLabel()->text(), QStringLiteral("No steps added yet"));

    for (const char* title : {"Intro", "Demo", "Questions"}) {
        AddStepView* add = sheet->showAddStep();
        EXPECT_EQ(add->windowTitle(), QStringLiteral("Add Step"));
        EXPECT_EQ(add->titleField()->placeholderText(), QStringLiteral("e.g., Presentación"));
        EXPECT_FALSE(add->addButton()->isEnabled());
        QTest::keyClicks(add->titleField(), QString::fromUtf8(title));
        QTest::mouseClick(add->addButton(), Qt::LeftButton);
        settle();
    }
    EXPECT_EQ(f.storedTitlesInOrder(), (std::vector<std::string>{"Intro", "Demo", "Questions"}));
    EXPECT_EQ(f.section()->stepsCaption()->text(), QStringLiteral("Steps (3)"));
    EXPECT_FALSE(sheet->emptyLabel()->isVisible());
    ASSERT_EQ(sheet->stepRows().size(), 3u);
    EXPECT_GE(redraw.count(), 3);

    // Up on the third, down on the first: the list follows the new order.
    QTest::mouseClick(sheet->stepRows()[2]->moveUpButton(), Qt::LeftButton);
    settle();
    EXPECT_EQ(f.storedTitlesInOrder(), (std::vector<std::string>{"Intro", "Questions", "Demo"}));
    EXPECT_EQ(rowTitles(*sheet), (std::vector<QString>{"Intro", "Questions", "Demo"}));
    QTest::mouseClick(sheet->stepRows()[0]->moveDownButton(), Qt::LeftButton);
    settle();
    EXPECT_EQ(f.storedTitlesInOrder(), (std::vector<std::string>{"Questions", "Intro", "Demo"}));
    // The array's arrangement never changed.
    const auto steps = f.stored().progressBar->steps;
    EXPECT_EQ(steps[0].title, "Intro");
    EXPECT_EQ(steps[2].title, "Questions");

    QTest::mouseClick(sheet->stepRows()[1]->toggleButton(), Qt::LeftButton);
    settle();
    EXPECT_TRUE(f.stored().progressBar->steps[0].isCompleted);
    EXPECT_TRUE(sheet->stepRows()[1]->titleLabel()->font().strikeOut());
    EXPECT_EQ(sheet->stepRows()[1]->toggleButton()->symbol(), "checkmark.circle.fill");

    QTest::mouseClick(sheet->stepRows()[0]->deleteButton(), Qt::LeftButton);
    settle();
    EXPECT_EQ(f.storedTitlesInOrder(), (std::vector<std::string>{"Intro", "Demo"}));
    EXPECT_EQ(f.stored().progressBar->steps[0].order, 0);
    EXPECT_EQ(f.stored().progressBar->steps[1].order, 1);
    EXPECT_EQ(f.section()->stepsCaption()->text(), QStringLiteral("Steps (2)"));

    QTest::mouseClick(sheet->doneButton(), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_FALSE(sheet->isVisible());
}

TEST(ProgressBarPanel, AStepTitleOfBlanksCannotBeAdded) {
    ProgressFixture f;
    ProgressBarConfigView sheet(*f.s.streamManager);
    AddStepView* add = sheet.showAddStep();
    QTest::keyClicks(add->titleField(), QStringLiteral("   "));
    EXPECT_FALSE(add->addButton()->isEnabled());
    sheet.addStep(QStringLiteral("  "));
    EXPECT_TRUE(f.stored().progressBar->steps.empty());
    QTest::mouseClick(add->cancelButton(), Qt::LeftButton);
}

TEST(ProgressBarPanel, TheSheetsLayoutAndColourControls) {
    ProgressFixture f({"One"});
    ProgressBarConfigView sheet(*f.s.streamManager);
    sheet.show();
    EXPECT_TRUE(sheet.enabledSwitch()->isChecked());
    EXPECT_TRUE(sheet.horizontalButton()->isChecked());
    EXPECT_EQ(sheet.firstPositionButton()->text(), QStringLiteral("Top"));
    EXPECT_EQ(sheet.secondPositionButton()->text(), QStringLiteral("Bottom"));
    EXPECT_TRUE(sheet.secondPositionButton()->isChecked());
    QTest::mouseClick(sheet.firstPositionButton(), Qt::LeftButton);
    EXPECT_EQ(f.stored().progressBar->position, ProgressBarPosition::top);

    QTest::mouseClick(sheet.verticalButton(), Qt::LeftButton);
    EXPECT_EQ(f.stored().progressBar->orientation, ProgressBarOrientation::vertical);
    EXPECT_EQ(sheet.firstPositionButton()->text(), QStringLiteral("Left"));
    EXPECT_EQ(sheet.secondPositionButton()->accessibleName(), QStringLiteral("Right"));
    // "top" on a vertical bar stands at the right, and the choice says so.
    EXPECT_TRUE(sheet.secondPositionButton()->isChecked());
    QTest::mouseClick(sheet.firstPositionButton(), Qt::LeftButton);
    EXPECT_EQ(f.stored().progressBar->position, ProgressBarPosition::left);

    QSlider* size = sheet.sizeSlider()->slider();
    EXPECT_EQ(size->maximum(), 8);  // 40 to 120 in steps of 10
    size->setValue(4);
    EXPECT_DOUBLE_EQ(f.stored().progressBar->size, 80);
    EXPECT_EQ(sheet.sizeSlider()->readOut()->text(), QStringLiteral("Size: 80px"));
    QSlider* opacity = sheet.opacitySlider()->slider();
    EXPECT_EQ(opacity->maximum(), 7);  // 0.3 to 1.0 in steps of 0.1
    opacity->setValue(2);
    EXPECT_DOUBLE_EQ(f.stored().progressBar->opacity, 0.5);
    EXPECT_EQ(sheet.opacitySlider()->readOut()->text(), QStringLiteral("Opacity: 50%"));
    QSlider* text = sheet.textSizeSlider()->slider();
    EXPECT_EQ(text->maximum(), 7);  // 10 to 24 in steps of 2
    text->setValue(7);
    EXPECT_DOUBLE_EQ(f.stored().progressBar->textSize, 24);
    EXPECT_EQ(sheet.textSizeSlider()->readOut()->text(), QStringLiteral("Text Size: 24pt"));

    emit sheet.completedColorButton()->colorChosen(CodableColor{1, 0, 0, 1});
    EXPECT_EQ(f.stored().progressBar->completedColor, (CodableColor{1, 0, 0, 1}));
    EXPECT_EQ(sheet.completedColorButton()->color(), (CodableColor{1, 0, 0, 1}));
    emit sheet.pendingColorButton()->colorChosen(CodableColor{0, 0, 1, 1});
    EXPECT_EQ(f.stored().progressBar->pendingColor, (CodableColor{0, 0, 1, 1}));
    emit sheet.textColorButton()->colorChosen(CodableColor{0, 1, 0, 1});
    EXPECT_EQ(f.stored().progressBar->textColor, (CodableColor{0, 1, 0, 1}));

    QTest::mouseClick(sheet.enabledSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.stored().progressBar->enabled);
    EXPECT_FALSE(f.section()->enabledSwitch()->isChecked());
}

TEST(ProgressBarPanel, WithoutAPresetNothingIsWritten) {
    Session s;
    RightSidebarView sidebar(*s.streamManager);
    ProgressBarSection* p = sidebar.presetTab()->progressBar();
    p->updatePresetProgressBar(true);
    p->toggleStepCompletion(Uuid::generate());
    ProgressBarConfigView sheet(*s.streamManager);
    sheet.addStep(QStringLiteral("Lost"));
    sheet.saveConfiguration(ProgressBarConfig{});
    EXPECT_FALSE(s.streamManager->currentPreset());
    EXPECT_TRUE(s.storage->loadPresets().empty());
}

// --------------------------------------------------------- on the program

// Pixels near pure red inside the program's picture: the completed colour
// of the bar below, which nothing else in the scene uses.
int completedPixels(StreamPreviewView& stage) {
    const QImage shot = stage.grab().toImage();
    const QRect box = stage.pictureBox();
    int count = 0;
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x) {
            const QColor c = shot.pixelColor(x, y);
            if (c.red() > 200 && c.green() < 40 && c.blue() < 40) ++count;
        }
    return count;
}

struct ProgramFixture : ProgressFixture {
    std::unique_ptr<CenterContentView> center;

    ProgramFixture() : ProgressFixture({"Intro", "Demo", "Questions"}) {
        Preset p = *s.streamManager->currentPreset();
        p.progressBar->completedColor = {1, 0, 0, 1};
        p.progressBar->pendingColor = {0, 0, 1, 1};
        p.progressBar->opacity = 1.0;
        p.progressBar->size = 120;
        // A slides source, so that the stage draws the composition itself.
        StreamingScene& scene = p.scenes.front();
        scene.sources.clear();
        SourceFactory::addSlidesSource(scene);
        scene.progressBarEnabled = true;
        s.streamManager->setCurrentPreset(p);
        s.streamManager->switchToScene(p.scenes.front());
        center = std::make_unique<CenterContentView>(*s.streamManager, nullptr);
        center->resize(1400, 500);
        center->show();
        QApplication::processEvents();
        s.streamManager->updateLive();
        QApplication::processEvents();
    }
    StreamPreviewView& program() const { return *center->programStage(); }
};

TEST(ProgressBarPanel, ATickedStepReachesTheProgramPicture) {
    ProgramFixture f;
    ASSERT_TRUE(f.s.streamManager->programScene());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !f.program().isShowingMockContent(); }, 5000));
    // Nothing done yet: no completed colour anywhere.
    ASSERT_TRUE(QTest::qWaitFor([&] { return completedPixels(f.program()) == 0; }, 5000));
    QTest::mouseClick(f.section()->stepButtons()[0], Qt::LeftButton);
    int done = 0;
    EXPECT_TRUE(QTest::qWaitFor([&] { return (done = completedPixels(f.program())) > 20; }, 5000)) << done;
    QTest::mouseClick(f.section()->stepButtons()[0], Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return completedPixels(f.program()) == 0; }, 5000));
}

TEST(ProgressBarPanel, AStepDeletedWhileTheProgramShowsItLeavesThePicture) {
    ProgramFixture f;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !f.program().isShowingMockContent(); }, 5000));
    QTest::mouseClick(f.section()->stepButtons()[1], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return completedPixels(f.program()) > 20; }, 5000));

    ProgressBarConfigView* sheet = f.section()->showProgressBarConfig();
    ASSERT_EQ(sheet->stepRows().size(), 3u);
    QTest::mouseClick(sheet->stepRows()[1]->deleteButton(), Qt::LeftButton);
    settle();
    EXPECT_EQ(f.stored().progressBar->steps.size(), 2u);
    // The program scene was copied before the deletion and still follows the
    // preset: the done step and its completed connector are gone.
    EXPECT_TRUE(QTest::qWaitFor([&] { return completedPixels(f.program()) == 0; }, 5000));
    EXPECT_TRUE(f.s.streamManager->programScene());
    EXPECT_EQ(f.section()->stepButtons().size(), 2u);
    sheet->close();
}

}  // namespace progress_bar_panel_tests
}  // namespace orvane
