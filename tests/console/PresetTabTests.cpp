#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/SegmentedButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/sidebar/PresetTabView.h"
#include "console/sidebar/RightSidebarView.h"
#include "console/sidebar/SceneTransitionsSection.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace preset_tab_tests {

using test::Session;

struct PresetFixture {
    Session s;
    Preset preset = createPreset("Settings", PresetTemplate::streaming);
    std::unique_ptr<RightSidebarView> sidebar;

    PresetFixture() {
        s.storage->savePreset(preset);
        s.streamManager->setCurrentPreset(preset);
        sidebar = std::make_unique<RightSidebarView>(*s.streamManager);
        sidebar->setSelectedTab(ConfigTab::preset);
        sidebar->resize(280, 900);
        sidebar->show();
    }
    PresetTabView* tab() const { return sidebar->presetTab(); }
    Preset stored() const {
        for (const Preset& p : s.storage->loadPresets())
            if (p.id == preset.id) return p;
        ADD_FAILURE() << "preset file missing";
        return {};
    }
};

TEST(ConsolePresetTab, TransitionsAreWrittenIntoThePresetFile) {
    PresetFixture f;
    SceneTransitionsSection* t = f.tab()->transitions();
    EXPECT_EQ(t->typeButton()->text(), QStringLiteral("Fade"));
    QList<QAction*> entries = t->typeButton()->menu()->actions();
    ASSERT_EQ(entries.size(), 9);
    EXPECT_EQ(entries[8]->text(), QStringLiteral("Fade + Scale"));
    EXPECT_TRUE(entries[1]->isChecked());
    entries[3]->trigger();
    EXPECT_EQ(f.stored().sceneTransition.type, TransitionType::slideLeft);
    EXPECT_EQ(t->typeButton()->text(), QStringLiteral("Slide Left"));
    EXPECT_TRUE(entries[3]->isChecked());
    EXPECT_FALSE(entries[1]->isChecked());

    // 0.1 to 2.0 in steps of 0.05, read out with two decimals.
    EXPECT_EQ(t->durationSlider()->minimum(), 2);
    EXPECT_EQ(t->durationSlider()->maximum(), 40);
    t->durationSlider()->setValue(7);
    EXPECT_NEAR(f.stored().sceneTransition.duration, 0.35, 1e-9);
    EXPECT_EQ(t->durationText()->text(), QStringLiteral("0.35s"));

    QTest::mouseClick(t->enabledSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.stored().sceneTransition.enabled);
    EXPECT_FALSE(t->durationSlider()->isVisible());
    EXPECT_FALSE(f.s.streamManager->currentPreset()->sceneTransition.enabled);
}

TEST(ConsolePresetTab, HideProgramAndTheDrawingButton) {
    PresetFixture f;
    EXPECT_TRUE(f.tab()->hideProgramSwitch()->isChecked());
    QTest::mouseClick(f.tab()->hideProgramSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.stored().hideProgramWhenPopout);
    EXPECT_FALSE(f.s.streamManager->currentPreset()->hideProgramWhenPopout);

    EXPECT_TRUE(f.tab()->positionButton(DrawingButtonPosition::bottomRight)->isChecked());
    QTest::mouseClick(f.tab()->positionButton(DrawingButtonPosition::centerLeft), Qt::LeftButton);
    EXPECT_EQ(f.s.streamManager->drawing().drawingButtonPosition(), DrawingButtonPosition::centerLeft);
    EXPECT_TRUE(f.tab()->positionButton(DrawingButtonPosition::centerLeft)->isChecked());
    EXPECT_FALSE(f.tab()->positionButton(DrawingButtonPosition::bottomRight)->isChecked());

    const bool shown = f.s.streamManager->drawing().showDrawingButton();
    QTest::mouseClick(f.tab()->showDrawingButtonSwitch(), Qt::LeftButton);
    EXPECT_EQ(f.s.streamManager->drawing().showDrawingButton(), !shown);
    EXPECT_EQ(f.tab()->showDrawingButtonSwitch()->isChecked(), !shown);
}

TEST(ConsolePresetTab, WithoutAPresetNothingIsWritten) {
    Session s;
    RightSidebarView sidebar(*s.streamManager);
    sidebar.presetTab()->transitions()->durationSlider()->setValue(10);
    EXPECT_FALSE(s.streamManager->currentPreset());
    EXPECT_TRUE(s.storage->loadPresets().empty());
}

}  // namespace
}  // namespace orvane
