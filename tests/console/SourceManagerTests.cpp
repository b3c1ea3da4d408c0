#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QEnterEvent>
#include <QLabel>
#include <filesystem>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ConfirmDialog.h"
#include "console/controls/SymbolButton.h"
#include "console/main_window/ContentView.h"
#include "console/main_window/MainStreamingView.h"
#include "console/presets/PresetCard.h"
#include "console/presets/PresetSelectionView.h"
#include "console/scene_tab/SceneSourcesList.h"
#include "console/scene_tab/SceneTabView.h"
#include "console/sheets/AddSourceView.h"
#include "console/sheets/SceneSourcesView.h"
#include "console/sheets/SourceItemView.h"
#include "console/sheets/WindowSelectorView.h"
#include "console/sidebar/RightSidebarView.h"
#include "document/PresetTemplates.h"
#include "support/FakeCaptureBackend.h"

namespace orvane {
namespace source_manager_tests {

using test::LogCapture;
using test::Session;

Source managerSource(SourceType type, const std::string& name) {
    Source source;
    source.type = type;
    source.name = name;
    return source;
}

// A session on one scene with three sources, and the sheet over it.
struct ManagerFixture {
    Session s;
    Preset preset;
    StreamingScene scene;
    std::unique_ptr<SceneSourcesView> sheet;
    std::unique_ptr<QSignalSpy> writes;

    ManagerFixture() {
        preset = createPreset("Manage", PresetTemplate::custom);
        scene = makeScene("Interview");
        scene.sources = {managerSource(SourceType::camera, "Host"), managerSource(SourceType::screen, "Slides PC"),
                         managerSource(SourceType::window, "Browser")};
        scene.selectedSourceId = scene.sources[1].id;
        preset.scenes = {scene};
        s.storage->savePreset(preset);
        s.streamManager->setCurrentPreset(preset);
        s.streamManager->switchToScene(scene);
        sheet = std::make_unique<SceneSourcesView>(*s.streamManager, scene, nullptr);
        // Deleted by the fixture, not on close.
        sheet->setAttribute(Qt::WA_DeleteOnClose, false);
        sheet->show();
        writes = std::make_unique<QSignalSpy>(s.streamManager.get(), &StreamManager::sceneUpdateTimestampChanged);
    }
    StreamingScene stored() const {
        for (const Preset& p : s.storage->loadPresets())
            if (p.id == preset.id) return p.scenes.front();
        ADD_FAILURE() << "preset file missing";
        return {};
    }
    std::vector<std::string> storedNames() const {
        std::vector<std::string> names;
        for (const Source& source : stored().sources) names.push_back(source.name);
        return names;
    }
};

int countOf(const std::string& text, const std::string& what) {
    int n = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++n;
    return n;
}

void hover(QWidget* widget) {
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QApplication::sendEvent(widget, &enter);
}

TEST(ConsoleSourceManager, TheSheetShowsTheScenesSourcesOnItsOwnCopy) {
    ManagerFixture f;
    EXPECT_EQ(f.sheet->windowTitle(), QStringLiteral("Manage Sources - Interview"));
    EXPECT_EQ(f.sheet->title(), QStringLiteral("Manage Sources - Interview"));
    EXPECT_EQ(f.sheet->size(), QSize(500, 600));
    ASSERT_EQ(f.sheet->items().size(), 3u);
    EXPECT_EQ(f.sheet->items()[0]->accessibleName(), QStringLiteral("Host"));
    EXPECT_EQ(f.sheet->items()[0]->accessibleDescription(), QStringLiteral("Camera"));
    EXPECT_EQ(f.sheet->items()[2]->accessibleDescription(), QStringLiteral("Window"));
    EXPECT_STREQ(SourceItemView::symbolFor(SourceType::content), "doc.fill");
    EXPECT_FALSE(f.sheet->hasUnsavedChanges());
    EXPECT_EQ(f.sheet->doneButton()->accessibleName(), QStringLiteral("Done"));
    EXPECT_EQ(f.sheet->addSourceButton()->accessibleName(), QStringLiteral("Add Source"));
}

TEST(ConsoleSourceManager, AnEmptySceneSaysHowToStart) {
    Session s;
    Preset preset = createPreset("Empty", PresetTemplate::custom);
    StreamingScene scene = makeScene("Blank");
    preset.scenes = {scene};
    s.streamManager->setCurrentPreset(preset);
    SceneSourcesView sheet(*s.streamManager, scene, nullptr);
    sheet.show();
    EXPECT_TRUE(sheet.items().empty());
    QStringList texts;
    for (QLabel* l : sheet.findChildren<QLabel*>())
        if (l->isVisible()) texts << l->text();
    EXPECT_TRUE(texts.contains(QStringLiteral("No sources added")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Click 'Add Source' to get started")));
}

TEST(ConsoleSourceManager, ThreeChangesInABurstGiveOneWriteAndOneSyncLine) {
    ManagerFixture f;
    QSignalSpy synced(f.sheet.get(), &SceneSourcesView::sceneSynced);
    LogCapture log;
    f.sheet->deleteSource(f.scene.sources[0].id);
    f.sheet->addSource(managerSource(SourceType::content, "Notes"));
    f.sheet->deleteSource(f.scene.sources[2].id);
    // Nothing is written while changes keep coming.
    EXPECT_EQ(f.writes->count(), 0);
    EXPECT_TRUE(f.sheet->isSyncScheduled());
    EXPECT_EQ(f.storedNames().size(), 3u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.writes->count() > 0; }, 5000));
    // And nothing more after it.
    QTest::qWait(SceneSourcesView::syncDelayMs + 300);
    const std::string lines = log.text();
    EXPECT_EQ(f.writes->count(), 1);
    EXPECT_EQ(synced.count(), 1);
    EXPECT_EQ(countOf(lines, "🔄 Synced scene changes to binding"), 1) << lines;
    EXPECT_EQ(countOf(lines, "📝 Scene marked as changed, sources count: "), 3) << lines;
    EXPECT_NE(lines.find("📝 Scene marked as changed, sources count: 2\n"), std::string::npos) << lines;
    EXPECT_NE(lines.find("📝 Scene marked as changed, sources count: 3\n"), std::string::npos) << lines;
    EXPECT_EQ(f.storedNames(), (std::vector<std::string>{"Slides PC", "Notes"}));
    EXPECT_FALSE(f.sheet->hasUnsavedChanges());
}

TEST(ConsoleSourceManager, ChangesSpreadOverFourTenthsOfASecondStillGiveOneWrite) {
    ManagerFixture f;
    LogCapture log;
    QElapsedTimer clock;
    clock.start();
    f.sheet->addSource(managerSource(SourceType::camera, "One"));
    QTest::qWait(150);
    f.sheet->addSource(managerSource(SourceType::camera, "Two"));
    QTest::qWait(150);
    f.sheet->addSource(managerSource(SourceType::camera, "Three"));
    const qint64 spread = clock.elapsed();
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.writes->count() > 0; }, 5000));
    QTest::qWait(SceneSourcesView::syncDelayMs + 300);
    const std::string lines = log.text();
    if (spread >= SceneSourcesView::syncDelayMs)
        GTEST_SKIP() << "the machine stalled for " << spread << " ms between the changes; the burst was not a burst";
    EXPECT_EQ(f.writes->count(), 1);
    EXPECT_EQ(countOf(lines, "🔄 Synced scene changes to binding"), 1) << lines;
    EXPECT_EQ(f.stored().sources.size(), 6u);
}

TEST(ConsoleSourceManager, ClosingRightAfterAChangeStillWritesIt) {
    ManagerFixture f;
    LogCapture log;
    f.sheet->deleteSource(f.scene.sources[0].id);
    QTest::qWait(100);
    QTest::mouseClick(f.sheet->doneButton(), Qt::LeftButton);
    // Written on the way out, not half a second later.
    EXPECT_EQ(f.writes->count(), 1);
    EXPECT_FALSE(f.sheet->isVisible());
    EXPECT_EQ(f.storedNames(), (std::vector<std::string>{"Slides PC", "Browser"}));
    QTest::qWait(SceneSourcesView::syncDelayMs + 300);
    EXPECT_EQ(f.writes->count(), 1);
    EXPECT_EQ(countOf(log.text(), "🔄 Synced scene changes to binding"), 1);
}

TEST(ConsoleSourceManager, EscapeAfterAChangeWritesItToo) {
    ManagerFixture f;
    f.sheet->addSource(managerSource(SourceType::screen, "Second Screen"));
    QTest::keyClick(f.sheet.get(), Qt::Key_Escape);
    EXPECT_FALSE(f.sheet->isVisible());
    EXPECT_EQ(f.writes->count(), 1);
    EXPECT_EQ(f.stored().sources.size(), 4u);
}

TEST(ConsoleSourceManager, ClosingWithoutAChangeWritesNothing) {
    ManagerFixture f;
    LogCapture log;
    const auto file = f.s.storage->fileFor(f.preset);
    const auto modified = std::filesystem::last_write_time(file);
    QTest::mouseClick(f.sheet->doneButton(), Qt::LeftButton);
    QTest::qWait(SceneSourcesView::syncDelayMs + 300);
    EXPECT_EQ(f.writes->count(), 0);
    EXPECT_EQ(std::filesystem::last_write_time(file), modified);
    EXPECT_EQ(log.text().find("🔄 Synced"), std::string::npos);
}

TEST(ConsoleSourceManager, DeletingAsksWithTheQuotedNameAndKeepsTheSelection) {
    Session s;
    Preset preset = createPreset("Quotes", PresetTemplate::custom);
    StreamingScene scene = makeScene("Panel");
    scene.sources = {managerSource(SourceType::camera, "Joe's \"Best\" Cam"), managerSource(SourceType::screen, "Desk")};
    scene.selectedSourceId = scene.sources[0].id;
    preset.scenes = {scene};
    s.storage->savePreset(preset);
    s.streamManager->setCurrentPreset(preset);
    SceneSourcesView sheet(*s.streamManager, scene, nullptr);
    sheet.setAttribute(Qt::WA_DeleteOnClose, false);
    sheet.show();

    SourceItemView* item = sheet.items()[0];
    EXPECT_FALSE(item->isDeleteButtonVisible());
    hover(item);
    EXPECT_TRUE(item->isDeleteButtonVisible());
    EXPECT_EQ(item->deleteButton()->accessibleName(), QStringLiteral("Delete Source"));
    QTest::mouseClick(item->deleteButton(), Qt::LeftButton);
    ConfirmDialog* alert = item->confirmDelete();
    ASSERT_NE(alert, nullptr);
    EXPECT_TRUE(alert->isVisible());
    EXPECT_EQ(alert->title(), QStringLiteral("Delete Source"));
    EXPECT_EQ(alert->message(), QStringLiteral("Are you sure you want to delete 'Joe's \"Best\" Cam'?"));
    EXPECT_EQ(alert->cancelButton()->text(), QStringLiteral("Cancel"));
    EXPECT_EQ(alert->destructiveButton()->text(), QStringLiteral("Delete"));
    QTest::mouseClick(alert->cancelButton(), Qt::LeftButton);
    EXPECT_EQ(sheet.localScene().sources.size(), 2u);
    EXPECT_FALSE(sheet.hasUnsavedChanges());

    alert = sheet.items()[0]->confirmDelete();
    QTest::mouseClick(alert->destructiveButton(), Qt::LeftButton);
    ASSERT_EQ(sheet.localScene().sources.size(), 1u);
    EXPECT_EQ(sheet.localScene().sources[0].name, "Desk");
    EXPECT_TRUE(sheet.hasUnsavedChanges());
    // The sheet leaves the selection as it is, even on a deleted source.
    EXPECT_EQ(sheet.localScene().selectedSourceId, scene.sources[0].id);
    sheet.syncToBinding();
    const Preset stored = s.storage->loadPresets().front();
    ASSERT_EQ(stored.scenes.front().sources.size(), 1u);
    EXPECT_EQ(stored.scenes.front().selectedSourceId, scene.sources[0].id);
    // A source that is gone already is skipped.
    sheet.deleteSource(scene.sources[0].id);
    EXPECT_FALSE(sheet.hasUnsavedChanges());
}

TEST(ConsoleSourceManager, ANameOfBlanksPassesOnlyEmptinessIsTested) {
    test::ensureApplication();
    StreamingScene scene = makeScene("S");
    AddSourceView add(scene, nullptr);
    EXPECT_EQ(add.windowTitle(), QStringLiteral("Add Source"));
    EXPECT_EQ(add.nameField()->placeholderText(), QStringLiteral("Enter source name"));
    EXPECT_EQ(add.sourceType(), SourceType::camera);
    EXPECT_FALSE(add.canAddSource());
    EXPECT_FALSE(add.addButton()->isEnabled());
    add.nameField()->setText(QStringLiteral("   "));
    EXPECT_TRUE(add.canAddSource());
    EXPECT_TRUE(add.addButton()->isEnabled());
    add.nameField()->setText(QString());
    EXPECT_FALSE(add.canAddSource());
}

TEST(ConsoleSourceManager, AWindowSourceNeedsAWindow) {
    test::ensureApplication();
    StreamingScene scene = makeScene("S");
    scene.sources = {managerSource(SourceType::camera, "A"), managerSource(SourceType::camera, "B")};
    test::FakeCaptureBackend backend;
    AddSourceView add(scene, &backend);
    add.show();
    EXPECT_FALSE(add.windowSection()->isVisible());
    add.nameField()->setText(QStringLiteral("Browser"));
    QTest::mouseClick(add.typeRow(SourceType::window), Qt::LeftButton);
    EXPECT_EQ(add.sourceType(), SourceType::window);
    EXPECT_TRUE(add.typeRow(SourceType::window)->isChecked());
    EXPECT_FALSE(add.typeRow(SourceType::camera)->isChecked());
    EXPECT_TRUE(add.windowSection()->isVisible());
    EXPECT_TRUE(add.chooseWindowButton()->isVisible());
    EXPECT_FALSE(add.changeWindowButton()->isVisible());
    EXPECT_FALSE(add.canAddSource());
    EXPECT_FALSE(add.addButton()->isEnabled());

    // The row opens the window picker; its choice comes back here.
    QTest::mouseClick(add.chooseWindowButton(), Qt::LeftButton);
    WindowSelectorView* picker = add.findChild<WindowSelectorView*>();
    ASSERT_NE(picker, nullptr);
    CaptureWindow window;
    window.id = 4242;
    window.title = QStringLiteral("Docs - Browser");
    window.ownerName = QStringLiteral("browser");
    picker->choose(window);
    ASSERT_TRUE(add.selectedWindow());
    EXPECT_TRUE(add.canAddSource());
    EXPECT_TRUE(add.changeWindowButton()->isVisible());
    EXPECT_FALSE(add.chooseWindowButton()->isVisible());

    std::vector<Source> added;
    QObject::connect(&add, &AddSourceView::sourceAdded, [&](const Source& s) { added.push_back(s); });
    LogCapture log;
    QTest::mouseClick(add.addButton(), Qt::LeftButton);
    EXPECT_NE(log.text().find("➕ Adding source: Browser, total sources will be: 3\n"), std::string::npos);
    ASSERT_EQ(added.size(), 1u);
    const Source source = added.front();
    EXPECT_EQ(source.type, SourceType::window);
    EXPECT_EQ(source.name, "Browser");
    EXPECT_EQ(source.configuration.windowId, 4242u);
    EXPECT_EQ(source.configuration.windowTitle, "Docs - Browser");
    EXPECT_EQ(source.configuration.windowOwner, "browser");
    EXPECT_FALSE(add.isVisible());
}

TEST(ConsoleSourceManager, TheAddDialogsSourceJoinsTheCopyWithDefaultsAndTheNameAsTyped) {
    ManagerFixture f;
    AddSourceView* add = f.sheet->showAddSource();
    ASSERT_NE(add, nullptr);
    add->nameField()->setText(QStringLiteral("  Spaced  "));
    QTest::mouseClick(add->typeRow(SourceType::content), Qt::LeftButton);
    EXPECT_FALSE(add->windowSection()->isVisible());
    LogCapture log;
    QTest::mouseClick(add->addButton(), Qt::LeftButton);
    const std::string lines = log.text();
    EXPECT_NE(lines.find("➕ Adding source:   Spaced  , total sources will be: 4\n"), std::string::npos) << lines;
    EXPECT_NE(lines.find("📝 Scene marked as changed, sources count: 4\n"), std::string::npos) << lines;
    ASSERT_EQ(f.sheet->localScene().sources.size(), 4u);
    const Source& added = f.sheet->localScene().sources.back();
    EXPECT_EQ(added.type, SourceType::content);
    EXPECT_EQ(added.name, "  Spaced  ");
    EXPECT_FALSE(added.configuration.contentType);
    EXPECT_DOUBLE_EQ(added.configuration.scale, SourceConfiguration{}.scale);
    EXPECT_EQ(f.sheet->items().size(), 4u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.writes->count() == 1; }, 5000));
    EXPECT_EQ(f.stored().sources.size(), 4u);
}

// The console, opened on a preset with one scene.
struct ConsoleFixture {
    Session s;
    Preset preset;
    std::unique_ptr<ContentView> root;

    ConsoleFixture() {
        preset = createPreset("Show", PresetTemplate::custom);
        StreamingScene scene = makeScene("Main");
        scene.sources = {managerSource(SourceType::camera, "Cam"), managerSource(SourceType::screen, "Screen")};
        preset.scenes = {scene};
        s.storage->savePreset(preset);
        root = std::make_unique<ContentView>(*s.streamManager, s.windowManager);
        root->resize(1400, 900);
        root->show();
        QApplication::processEvents();
        for (PresetCard* card : root->presetSelectionView()->findChildren<PresetCard*>())
            if (card->preset().id == preset.id) QTest::mouseClick(card, Qt::LeftButton);
    }
    MainStreamingView* console() const { return root->mainStreamingView(); }
    SceneTabView* tab() const { return console()->rightSidebar()->sceneTab(); }
};

TEST(ConsoleSourceManager, TheButtonBesideSourcesOpensTheSheetAndItsWriteReachesTheSidebar) {
    ConsoleFixture f;
    ASSERT_FALSE(f.root->showPresetSelection());
    ASSERT_TRUE(f.tab()->scene());
    SymbolButton* manage = f.tab()->sourcesList()->manageButton();
    EXPECT_EQ(manage->accessibleName(), QStringLiteral("Manage Sources"));
    EXPECT_EQ(manage->toolTip(), QStringLiteral("Manage Sources"));
    EXPECT_EQ(manage->symbol(), "arrow.up.forward.square");
    EXPECT_FALSE(f.console()->showingManageSources());
    QTest::mouseClick(manage, Qt::LeftButton);
    ASSERT_TRUE(f.console()->showingManageSources());
    SceneSourcesView* sheet = f.console()->showManageSources();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->title(), QStringLiteral("Manage Sources - Main"));

    const Uuid removed = sheet->localScene().sources[0].id;
    sheet->deleteSource(removed);
    // Until the write the sidebar still shows the scene as it was.
    EXPECT_EQ(f.tab()->sourcesList()->rows().size(), 2u);
    QTest::mouseClick(sheet->doneButton(), Qt::LeftButton);
    ASSERT_EQ(f.tab()->scene()->sources.size(), 1u);
    EXPECT_EQ(f.tab()->scene()->sources[0].name, "Screen");
    EXPECT_EQ(f.tab()->sourcesList()->rows().size(), 1u);
    ASSERT_TRUE(f.console()->selectedScene());
    EXPECT_EQ(f.console()->selectedScene()->sources.size(), 1u);
    EXPECT_EQ(f.s.storage->loadPresets().front().scenes.front().sources.size(), 1u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !f.console()->showingManageSources(); }, 2000));
}

}  // namespace source_manager_tests
}  // namespace orvane
