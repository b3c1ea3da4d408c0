#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ConsoleAccessibility.h"
#include "console/controls/SegmentedButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/scene_tab/SceneBackgroundSection.h"

namespace orvane {
namespace accessible_action_tests {

// The first action an assistive tool is offered for a control, run.
QString runFirstAction(QWidget* control) {
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(control);
    if (!access || !access->actionInterface()) return {};
    const QStringList names = access->actionInterface()->actionNames();
    if (names.isEmpty()) return {};
    access->actionInterface()->doAction(names.front());
    return names.front();
}

struct Background {
    StreamingScene scene;
    int edits = 0;
    std::unique_ptr<SceneBackgroundSection> section;

    Background() {
        test::ensureApplication();
        ConsoleAccessibility::install();
        scene.backgroundType = BackgroundType::solid;
        section = std::make_unique<SceneBackgroundSection>([this](const SceneEdit& edit) {
            edit(scene);
            ++edits;
            section->setScene(scene);  // as the scene tab does after each write
        });
        section->setScene(scene);
        section->show();
    }
};

TEST(AccessibleActions, GradientSegmentSwitchesTheBackgroundLikeAClick) {
    Background b;
    EXPECT_EQ(runFirstAction(b.section->gradientButton()), QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return b.edits > 0; }, 3000));
    EXPECT_EQ(b.scene.backgroundType, BackgroundType::gradient);
    EXPECT_FALSE(b.scene.gradientColors.empty());
    EXPECT_TRUE(b.section->gradientButton()->isChecked());
    EXPECT_FALSE(b.section->solidButton()->isChecked());
}

TEST(AccessibleActions, TheChosenSegmentStaysTheOnlyOneLit) {
    Background b;
    runFirstAction(b.section->solidButton());  // already solid
    EXPECT_TRUE(QTest::qWaitFor([&] { return b.edits > 0; }, 3000));
    EXPECT_EQ(b.scene.backgroundType, BackgroundType::solid);
    EXPECT_TRUE(b.section->solidButton()->isChecked());
    EXPECT_FALSE(b.section->gradientButton()->isChecked());
}

TEST(AccessibleActions, PressAndToggleDoWhatAClickDoes) {
    test::ensureApplication();
    ConsoleAccessibility::install();
    QWidget window;
    auto* plain = new QPushButton(QStringLiteral("&Save"), &window);
    auto* toggle = new ToggleSwitch(QStringLiteral("Switch"), &window);
    auto* box = new QCheckBox(QStringLiteral("Box"), &window);
    window.show();
    int plainClicks = 0, toggleClicks = 0, boxClicks = 0;
    QObject::connect(plain, &QPushButton::clicked, [&] { ++plainClicks; });
    QObject::connect(toggle, &QAbstractButton::clicked, [&] { ++toggleClicks; });
    QObject::connect(box, &QAbstractButton::clicked, [&] { ++boxClicks; });

    QAccessibleInterface* plainAccess = QAccessible::queryAccessibleInterface(plain);
    EXPECT_EQ(plainAccess->text(QAccessible::Name), QStringLiteral("Save"));
    EXPECT_EQ(plainAccess->role(), QAccessible::Button);
    EXPECT_EQ(runFirstAction(plain), QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return plainClicks == 1; }, 3000));

    EXPECT_EQ(runFirstAction(toggle), QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return toggleClicks == 1; }, 3000));
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(toggle)->state().checked);

    QAccessibleInterface* boxAccess = QAccessible::queryAccessibleInterface(box);
    EXPECT_EQ(boxAccess->role(), QAccessible::CheckBox);
    EXPECT_EQ(runFirstAction(box), QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return boxClicks == 1; }, 3000));
    EXPECT_TRUE(box->isChecked());

    // Widgets inside a button stay its children.
    auto* row = new QPushButton(&window);
    auto* inside = new QLabel(QStringLiteral("Inside"), row);
    QAccessibleInterface* rowAccess = QAccessible::queryAccessibleInterface(row);
    ASSERT_EQ(rowAccess->childCount(), 1);
    EXPECT_EQ(rowAccess->child(0)->object(), inside);
    EXPECT_EQ(rowAccess->indexOfChild(rowAccess->child(0)), 0);

    // A disabled control offers nothing to run.
    plain->setEnabled(false);
    EXPECT_FALSE(plainAccess->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
}

}  // namespace accessible_action_tests
}  // namespace orvane
