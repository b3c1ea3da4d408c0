#include <QApplication>
#include <QEnterEvent>
#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ConfirmDialog.h"
#include "console/presets/PresetCard.h"
#include "console/presets/PresetSelectionView.h"
#include "console/scene_list/LeftSidebarView.h"
#include "console/scene_list/SceneItemView.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace scene_list_tests {

using test::Session;

void hover(QWidget* widget) {
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QApplication::sendEvent(widget, &enter);
}

QAbstractButton* buttonNamed(ConfirmDialog* box, const QString& text) {
    for (QAbstractButton* b : {box->cancelButton(), box->destructiveButton()})
        if (b->text() == text) return b;
    return nullptr;
}

std::vector<StreamingScene> scenes(int count) {
    std::vector<StreamingScene> out;
    for (int i = 0; i < count; ++i) out.push_back(makeScene("Scene " + std::to_string(i + 1)));
    return out;
}

TEST(ConsoleSceneList, DeleteIsOfferedOnHoverOnlyWithMoreThanOneScene) {
    test::ensureApplication();
    LeftSidebarView one;
    one.setScenes(scenes(1), std::nullopt);
    one.show();
    hover(one.rows().front());
    EXPECT_FALSE(one.rows().front()->isDeleteButtonVisible());

    LeftSidebarView two;
    two.setScenes(scenes(2), std::nullopt);
    two.show();
    EXPECT_FALSE(two.rows().front()->isDeleteButtonVisible());
    hover(two.rows().front());
    EXPECT_TRUE(two.rows().front()->isDeleteButtonVisible());
}

TEST(ConsoleSceneList, TheTenthSceneHasNoKeyButCanBeClicked) {
    test::ensureApplication();
    LeftSidebarView list;
    const auto all = scenes(10);
    list.setScenes(all, all.front().id);
    list.show();
    ASSERT_EQ(list.rows().size(), 10u);
    EXPECT_EQ(list.rows()[8]->accessibleDescription(), QStringLiteral("Key 9"));
    EXPECT_TRUE(list.rows()[9]->accessibleDescription().isEmpty());
    std::vector<std::string> selected;
    QObject::connect(&list, &LeftSidebarView::sceneSelected,
                     [&](const StreamingScene& scene) { selected.push_back(scene.name); });
    QTest::mouseClick(list.rows()[9], Qt::LeftButton);
    QTest::mouseClick(list.rows()[0], Qt::LeftButton);  // already selected: still selects and flashes
    EXPECT_EQ(selected, (std::vector<std::string>{"Scene 10", "Scene 1"}));
    EXPECT_TRUE(list.rows()[0]->justSelected());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !list.rows()[0]->justSelected(); }, 2000));
}

TEST(ConsoleSceneList, DeletingAfterConfirmationAndCollapsing) {
    Session s;
    Preset preset = createPreset("List", PresetTemplate::streaming);
    s.streamManager->setCurrentPreset(preset);
    LeftSidebarView list;
    QObject::connect(&list, &LeftSidebarView::sceneDeleteRequested, s.streamManager.get(), &StreamManager::deleteScene);
    list.setScenes(preset.scenes, std::nullopt);
    list.show();

    SceneItemView* row = list.rows()[1];
    row->confirmDelete();
    ConfirmDialog* box = row->deleteConfirmation();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->message(),
              QStringLiteral("Are you sure you want to delete 'Screen + Webcam'? This action cannot be undone."));
    buttonNamed(box, QStringLiteral("Cancel"))->click();
    EXPECT_EQ(s.streamManager->currentPreset()->scenes.size(), 3u);
    row->confirmDelete();
    buttonNamed(row->deleteConfirmation(), QStringLiteral("Delete"))->click();
    ASSERT_EQ(s.streamManager->currentPreset()->scenes.size(), 2u);
    EXPECT_EQ(s.streamManager->currentPreset()->scenes[1].name, "Webcam Focus");

    list.setCollapsed(true);
    EXPECT_EQ(list.width(), LeftSidebarView::collapsedWidth);
    list.setCollapsed(false);
    EXPECT_EQ(list.width(), LeftSidebarView::expandedWidth);
}

TEST(ConsolePresetScreen, CardsCountScenesAndDeleteAfterConfirmation) {
    Session s;
    Preset three = createPreset("Three", PresetTemplate::gaming);
    Preset four = createPreset("Four", PresetTemplate::gaming);
    four.scenes.push_back(makeScene("Extra"));
    s.storage->savePreset(three);
    s.storage->savePreset(four);
    EXPECT_EQ(PresetCard::sceneCountText(1), QStringLiteral("1 scene"));
    EXPECT_EQ(PresetCard::sceneCountText(3), QStringLiteral("3 scenes"));
    EXPECT_TRUE(PresetCard::remainderText(3).isEmpty());
    EXPECT_EQ(PresetCard::remainderText(4), QStringLiteral("+1 more"));

    PresetSelectionView screen(*s.storage, s.settings());
    screen.resize(1000, 700);
    screen.show();
    ASSERT_EQ(screen.presets().size(), 2u);
    PresetCard* card = nullptr;
    for (PresetCard* c : screen.findChildren<PresetCard*>())
        if (c->preset().name == "Four") card = c;
    ASSERT_NE(card, nullptr);
    card->confirmDelete();
    ASSERT_NE(card->deleteConfirmation(), nullptr);
    buttonNamed(card->deleteConfirmation(), QStringLiteral("Delete"))->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return screen.presets().size() == 1u; }, 2000));
    EXPECT_EQ(screen.presets().front().name, "Three");
    EXPECT_FALSE(std::filesystem::exists(s.storage->fileFor(four)));
}

}  // namespace
}  // namespace orvane
