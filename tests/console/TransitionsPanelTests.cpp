#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ConsoleAccessibility.h"
#include "console/controls/ToggleSwitch.h"
#include "console/sidebar/SceneTransitionsSection.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace transitions_panel_tests {

using test::Session;

QLabel* infoLine(QWidget* root) {
    for (QLabel* label : root->findChildren<QLabel*>())
        if (label->text() == QStringLiteral("Switch scenes to preview the transition effect")) return label;
    return nullptr;
}

struct Panel {
    Session s;
    std::unique_ptr<SceneTransitionsSection> section;

    explicit Panel(std::optional<bool> enabledPreset) {
        if (enabledPreset) {
            Preset preset = createPreset("Transitions", PresetTemplate::streaming);
            preset.sceneTransition.enabled = *enabledPreset;
            s.storage->savePreset(preset);
            s.streamManager->setCurrentPreset(preset);
        }
        section = std::make_unique<SceneTransitionsSection>(*s.streamManager);
        section->resize(280, 240);
        section->show();
    }
    Preset stored() const {
        const auto presets = s.storage->loadPresets();
        return presets.empty() ? Preset{} : presets.front();
    }
};

TEST(TransitionsPanel, WithoutAPresetNothingShowsAndTheReadOutIsThreeTenths) {
    Panel p(std::nullopt);
    ASSERT_FALSE(p.s.streamManager->currentPreset().has_value());
    EXPECT_EQ(p.section->durationText()->text(), QStringLiteral("0.30s"));
    EXPECT_FALSE(p.section->enabledSwitch()->isChecked());
    EXPECT_FALSE(p.section->typeButton()->isVisible());
    EXPECT_FALSE(p.section->durationSlider()->isVisible());
    ASSERT_NE(infoLine(p.section.get()), nullptr);
    EXPECT_FALSE(infoLine(p.section.get())->isVisible());
}

TEST(TransitionsPanel, DisabledHidesTypeDurationAndTheInfoLine) {
    Panel p(false);
    EXPECT_FALSE(p.section->enabledSwitch()->isChecked());
    EXPECT_FALSE(p.section->typeButton()->isVisible());
    EXPECT_FALSE(p.section->durationSlider()->isVisible());
    EXPECT_FALSE(p.section->durationText()->isVisible());
    EXPECT_FALSE(infoLine(p.section.get())->isVisible());

    QTest::mouseClick(p.section->enabledSwitch(), Qt::LeftButton);
    EXPECT_TRUE(p.stored().sceneTransition.enabled);
    EXPECT_TRUE(p.section->typeButton()->isVisible());
    EXPECT_TRUE(p.section->durationSlider()->isVisible());
    EXPECT_TRUE(infoLine(p.section.get())->isVisible());
    EXPECT_EQ(p.section->durationText()->text(), QStringLiteral("1.10s"));
}

TEST(TransitionsPanel, MenuEntriesAreReachableAndChosenThroughTheirAccessibleAction) {
    // After the application's own factory and before the panel's buttons,
    // as the application root does.
    test::ensureApplication();
    ConsoleAccessibility::install();
    Panel p(true);
    QAccessibleInterface* type = QAccessible::queryAccessibleInterface(p.section->typeButton());
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->text(QAccessible::Name), QStringLiteral("Transition Type"));
    ASSERT_EQ(type->childCount(), 9);
    const QStringList expected{"None",       "Fade",     "Cross Dissolve", "Slide Left",  "Slide Right",
                               "Slide Up",   "Slide Down", "Scale",        "Fade + Scale"};
    QAccessibleInterface* slideUp = nullptr;
    for (int i = 0; i < type->childCount(); ++i) {
        QAccessibleInterface* entry = type->child(i);
        ASSERT_NE(entry, nullptr) << i;
        EXPECT_EQ(entry->text(QAccessible::Name), expected[i]);
        EXPECT_EQ(entry->parent(), type);
        EXPECT_EQ(type->indexOfChild(entry), i);
        EXPECT_FALSE(entry->state().invisible) << i;
        EXPECT_EQ(entry->state().checked, expected[i] == QStringLiteral("Fade")) << i;
        if (expected[i] == QStringLiteral("Slide Up")) slideUp = entry;
    }
    ASSERT_NE(slideUp, nullptr);
    ASSERT_NE(slideUp->actionInterface(), nullptr);
    ASSERT_EQ(slideUp->actionInterface()->actionNames(), QStringList{QAccessibleActionInterface::pressAction()});
    slideUp->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return p.stored().sceneTransition.type == TransitionType::slideUp; }, 3000));
    EXPECT_EQ(p.section->typeButton()->text(), QStringLiteral("Slide Up"));
    EXPECT_TRUE(slideUp->state().checked);

    // Hidden with the panel's details, the entries say so.
    QTest::mouseClick(p.section->enabledSwitch(), Qt::LeftButton);
    EXPECT_TRUE(slideUp->state().invisible);
}

}  // namespace transitions_panel_tests
}  // namespace orvane
