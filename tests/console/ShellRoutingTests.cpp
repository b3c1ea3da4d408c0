#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/bars/WindowManager.h"
#include "console/controls/ConfirmDialog.h"
#include "console/main_window/ContentView.h"
#include "console/main_window/MainStreamingView.h"
#include "console/presets/PresetCard.h"
#include "console/presets/PresetSelectionView.h"
#include "console/sheets/AddSceneView.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace shell_routing_tests {

using test::Session;

// Cards waiting for deletion still count as children until the event loop
// has run the deferred deletes.
void settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

std::vector<PresetCard*> presetCards(QWidget* screen) {
    settle();
    std::vector<PresetCard*> out;
    for (PresetCard* c : screen->findChildren<PresetCard*>())
        if (c->isVisibleTo(screen)) out.push_back(c);
    return out;
}

std::vector<QAbstractButton*> createCards(QWidget* screen) {
    settle();
    std::vector<QAbstractButton*> out;
    for (QAbstractButton* b : screen->findChildren<QAbstractButton*>())
        if (b->accessibleName() == QStringLiteral("Create New Preset") && b->isVisibleTo(screen)) out.push_back(b);
    return out;
}

PresetCard* cardNamed(QWidget* screen, const std::string& name) {
    for (PresetCard* c : presetCards(screen))
        if (c->preset().name == name) return c;
    return nullptr;
}

void confirmDelete(PresetCard* card) {
    card->confirmDelete();
    ConfirmDialog* box = card->deleteConfirmation();
    ASSERT_NE(box, nullptr);
    ASSERT_EQ(box->destructiveButton()->text(), QStringLiteral("Delete"));
    box->destructiveButton()->click();
}

TEST(ConsoleRouting, WithNoPresetsOnlyTheCreateCardShows) {
    Session s;
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    PresetSelectionView* screen = root.presetSelectionView();
    EXPECT_TRUE(screen->presets().empty());
    EXPECT_TRUE(presetCards(screen).empty());
    const auto create = createCards(screen);
    ASSERT_EQ(create.size(), 1u);
    EXPECT_TRUE(create.front()->isVisible());
    // The create card opens the create sheet.
    QTest::mouseClick(create.front(), Qt::LeftButton);
    QWidget* sheet = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->windowTitle() == QStringLiteral("Create New Preset")) sheet = w;
    ASSERT_NE(sheet, nullptr);
    sheet->close();
}

TEST(ConsoleRouting, DeletingACardLeavesTheSelectedPresetAndDoesNotReload) {
    Session s;
    Preset chosen = createPreset("Chosen", PresetTemplate::streaming);
    Preset other = createPreset("Other", PresetTemplate::gaming);
    s.storage->savePreset(chosen);
    s.storage->savePreset(other);
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    PresetSelectionView* screen = root.presetSelectionView();
    ASSERT_EQ(presetCards(screen).size(), 2u);
    QTest::mouseClick(cardNamed(screen, "Chosen"), Qt::LeftButton);
    ASSERT_FALSE(root.showPresetSelection());
    ASSERT_TRUE(root.selectedPreset());
    EXPECT_EQ(root.selectedPreset()->id, chosen.id);

    emit root.mainStreamingView()->changePresetRequested();
    ASSERT_TRUE(root.showPresetSelection());
    // A preset written behind the screen's back after it was shown.
    Preset late = createPreset("Late", PresetTemplate::custom);
    s.storage->savePreset(late);

    confirmDelete(cardNamed(screen, "Other"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return screen->presets().size() == 1u; }, 2000));
    EXPECT_FALSE(std::filesystem::exists(s.storage->fileFor(other)));
    ASSERT_TRUE(root.selectedPreset());
    EXPECT_EQ(root.selectedPreset()->id, chosen.id);
    // No reload: the late preset is not on the screen yet.
    EXPECT_EQ(cardNamed(screen, "Late"), nullptr);
    EXPECT_EQ(presetCards(screen).size(), 1u);

    // Even the selected preset's own card goes without touching the selection.
    confirmDelete(cardNamed(screen, "Chosen"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return screen->presets().empty(); }, 2000));
    ASSERT_TRUE(root.selectedPreset());
    EXPECT_EQ(root.selectedPreset()->id, chosen.id);
    EXPECT_TRUE(root.showPresetSelection());
    EXPECT_EQ(createCards(screen).size(), 1u);
}

TEST(ConsoleRouting, AStoredLastPresetIsOpenBehindThePresetScreen) {
    test::ensureApplication();
    QTemporaryDir dir;
    const QString settingsFile = dir.filePath(QStringLiteral("settings.ini"));
    PresetStorage storage(dir.filePath(QStringLiteral("data")).toStdString());
    Preset first = createPreset("First", PresetTemplate::custom);
    Preset last = createPreset("Last Used", PresetTemplate::gaming);
    storage.savePreset(first);
    storage.savePreset(last);
    {
        QSettings earlier(settingsFile, QSettings::IniFormat);
        earlier.setValue(QString::fromLatin1(PresetStorage::lastSelectedPresetKey),
                         QString::fromStdString(last.id.toString()));
        earlier.setValue(QStringLiteral("hasCompletedOnboarding"), true);
    }
    test::LogCapture log;
    StreamManager streamManager(storage, std::make_unique<QSettings>(settingsFile, QSettings::IniFormat));
    const std::string lines = log.text();
    EXPECT_NE(lines.find("✅ Loaded last selected preset: Last Used"), std::string::npos) << lines;
    WindowManager windowManager;
    ContentView root(streamManager, windowManager);
    root.resize(1280, 800);
    root.show();
    QApplication::processEvents();

    EXPECT_TRUE(root.showPresetSelection());
    EXPECT_TRUE(root.presetSelectionView()->isVisible());
    EXPECT_FALSE(root.mainStreamingView()->isVisible());
    EXPECT_FALSE(root.selectedPreset());
    ASSERT_TRUE(streamManager.currentPreset());
    EXPECT_EQ(streamManager.currentPreset()->id, last.id);
    ASSERT_TRUE(streamManager.activeScene());
    EXPECT_EQ(streamManager.activeScene()->name, "Game Only");
    EXPECT_EQ(root.presetSelectionView()->presets().size(), 2u);
}

TEST(ConsoleRouting, ChoosingAPresetWithoutScenesSwitchesToNoScene) {
    Session s;
    Preset empty = createPreset("Empty", PresetTemplate::custom);
    empty.scenes.clear();
    empty.activeSceneId.reset();
    s.storage->savePreset(empty);
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    ASSERT_FALSE(s.streamManager->activeScene());
    QSignalSpy sceneChanges(s.streamManager.get(), &StreamManager::activeSceneChanged);
    QSignalSpy selectionChanges(root.mainStreamingView(), &MainStreamingView::selectedSceneChanged);

    QTest::mouseClick(cardNamed(root.presetSelectionView(), "Empty"), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_FALSE(root.showPresetSelection());
    ASSERT_TRUE(s.streamManager->currentPreset());
    EXPECT_EQ(s.streamManager->currentPreset()->id, empty.id);
    EXPECT_TRUE(s.streamManager->currentPreset()->scenes.empty());
    EXPECT_EQ(sceneChanges.count(), 0);
    EXPECT_FALSE(s.streamManager->activeScene());
    EXPECT_FALSE(root.mainStreamingView()->selectedScene());
    EXPECT_EQ(selectionChanges.count(), 0);
}

TEST(ConsoleRouting, AddSceneWithAnEmptyNameAddsASceneWithNoName) {
    Session s;
    s.storage->savePreset(createPreset("Unnamed", PresetTemplate::streaming));
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    root.presetSelectionView()->selectPreset(root.presetSelectionView()->presets().front());
    const std::size_t before = s.streamManager->currentPreset()->scenes.size();
    AddSceneView* sheet = root.mainStreamingView()->showAddScene();
    ASSERT_NE(sheet, nullptr);
    ASSERT_TRUE(sheet->nameField()->text().isEmpty());
    EXPECT_TRUE(sheet->addButton()->isEnabled());
    QTest::mouseClick(sheet->addButton(), Qt::LeftButton);

    const auto& scenes = s.streamManager->currentPreset()->scenes;
    ASSERT_EQ(scenes.size(), before + 1);
    EXPECT_EQ(scenes.back().name, "");
    EXPECT_EQ(scenes.back().icon, sheet->selectedIcon());
    ASSERT_TRUE(s.streamManager->activeScene());
    EXPECT_EQ(s.streamManager->activeScene()->id, scenes.back().id);
    // The stored file has it too.
    const auto onDisk = s.storage->loadPresets();
    ASSERT_EQ(onDisk.size(), 1u);
    ASSERT_EQ(onDisk.front().scenes.size(), before + 1);
    EXPECT_EQ(onDisk.front().scenes.back().name, "");
}

TEST(ConsoleRouting, AlwaysOnTopAfterTheMainWindowIsGoneDoesNothing) {
    test::ensureApplication();
    WindowManager manager;
    auto* window = new QWidget;
    window->show();
    manager.setupMainWindow(window);
    QApplication::processEvents();
    ASSERT_EQ(manager.mainWindow(), window);
    delete window;
    EXPECT_EQ(manager.mainWindow(), nullptr);
    manager.setIsAlwaysOnTop(true);
    EXPECT_TRUE(manager.isAlwaysOnTop());
    manager.setIsVisibleInScreenShare(true);
    manager.setIsAlwaysOnTop(false);
    EXPECT_FALSE(manager.isAlwaysOnTop());
    EXPECT_EQ(manager.mainWindow(), nullptr);
}

}  // namespace
}  // namespace orvane
