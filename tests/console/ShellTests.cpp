#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/main_window/ContentView.h"
#include "console/main_window/MainStreamingView.h"
#include "console/presets/PresetSelectionView.h"
#include "console/scene_list/LeftSidebarView.h"
#include "console/scene_list/SceneItemView.h"
#include "console/sheets/AddSceneView.h"
#include "console/sheets/CreatePresetView.h"
#include "console/sheets/TemplateCard.h"
#include "console/stages/CenterContentView.h"
#include "console/stages/ProgramHeader.h"
#include "console/stages/StreamPreviewView.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace shell_tests {

using test::Session;

TEST(ConsoleShell, PresetScreenComesFirstThenConsoleThenBack) {
    Session s;
    Preset stored = createPreset("Stored", PresetTemplate::gaming);
    s.storage->savePreset(stored);
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    EXPECT_TRUE(root.showPresetSelection());
    EXPECT_TRUE(root.presetSelectionView()->isVisible());
    EXPECT_FALSE(root.mainStreamingView()->isVisible());
    ASSERT_EQ(root.presetSelectionView()->presets().size(), 1u);

    root.presetSelectionView()->selectPreset(root.presetSelectionView()->presets().front());
    EXPECT_FALSE(root.showPresetSelection());
    EXPECT_TRUE(root.mainStreamingView()->isVisible());
    ASSERT_TRUE(s.streamManager->currentPreset());
    EXPECT_EQ(s.streamManager->currentPreset()->id, stored.id);
    ASSERT_TRUE(s.streamManager->activeScene());
    EXPECT_EQ(s.streamManager->activeScene()->name, "Game Only");
    EXPECT_EQ(s.settings().value(PresetStorage::lastSelectedPresetKey).toString().toStdString(), stored.id.toString());

    emit root.mainStreamingView()->changePresetRequested();
    EXPECT_TRUE(root.showPresetSelection());
    EXPECT_TRUE(root.presetSelectionView()->isVisible());
    // The session keeps the document open behind the preset screen.
    EXPECT_TRUE(s.streamManager->currentPreset());
}

TEST(ConsoleShell, CreatingFromEachTemplateWritesTheFileAndOpensIt) {
    for (PresetTemplate t : allCases<PresetTemplate>()) {
        Session s;
        ContentView root(*s.streamManager, s.windowManager);
        root.resize(1280, 800);
        root.show();
        CreatePresetView* sheet = root.presetSelectionView()->showCreatePreset();
        ASSERT_NE(sheet, nullptr);
        EXPECT_FALSE(sheet->createButton()->isEnabled());
        const std::string name = "My " + std::string(toString(t));
        QTest::keyClicks(sheet->nameField(), QString::fromStdString(name));
        EXPECT_TRUE(sheet->createButton()->isEnabled());
        QTest::mouseClick(sheet->templateCard(t), Qt::LeftButton);
        EXPECT_EQ(sheet->selectedTemplate(), t);
        QTest::mouseClick(sheet->createButton(), Qt::LeftButton);

        ASSERT_TRUE(s.streamManager->currentPreset()) << name;
        const Preset& preset = *s.streamManager->currentPreset();
        EXPECT_EQ(preset.name, name);
        EXPECT_EQ(preset.scenes.size(), templateSceneNames(t).size());
        EXPECT_TRUE(std::filesystem::exists(s.storage->fileFor(preset))) << name;
        const auto onDisk = s.storage->loadPresets();
        ASSERT_EQ(onDisk.size(), 1u);
        EXPECT_EQ(onDisk.front().name, name);
        EXPECT_FALSE(root.showPresetSelection());
        ASSERT_TRUE(s.streamManager->activeScene());
        EXPECT_EQ(s.streamManager->activeScene()->name, std::string(templateSceneNames(t).front()));
    }
}

TEST(ConsoleShell, TheSceneListMarksTheSceneOnProgram) {
    Session s;
    s.storage->savePreset(createPreset("Marks", PresetTemplate::streaming));
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    root.presetSelectionView()->selectPreset(root.presetSelectionView()->presets().front());
    MainStreamingView* console = root.mainStreamingView();
    const auto& rows = console->leftSidebar()->rows();
    ASSERT_GE(rows.size(), 3u);
    const auto liveRows = [&] {
        std::vector<int> live;
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (rows[i]->isLive()) live.push_back(int(i));
        return live;
    };
    // A red tag in the row's lower right corner, or none.
    const auto redInTagCorner = [&](int row) {
        QApplication::processEvents();
        const QImage image = rows[row]->grab().toImage();
        int red = 0;
        for (int y = image.height() / 2; y < image.height(); ++y)
            for (int x = image.width() - 50; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                if (c.red() > 180 && c.green() < 90 && c.blue() < 90) ++red;
            }
        return red;
    };

    s.streamManager->switchToSceneAt(1);
    s.streamManager->updateLive();
    ASSERT_EQ(liveRows(), std::vector<int>{1});
    EXPECT_GT(redInTagCorner(1), 30);
    EXPECT_EQ(redInTagCorner(2), 0);
    EXPECT_TRUE(rows[1]->accessibleDescription().contains(QStringLiteral("Live on program")));

    // Another scene in preview leaves the mark where the program is.
    s.streamManager->switchToSceneAt(2);
    EXPECT_EQ(liveRows(), std::vector<int>{1});
    s.streamManager->updateLive();
    EXPECT_EQ(liveRows(), std::vector<int>{2});
    EXPECT_EQ(redInTagCorner(1), 0);
    EXPECT_FALSE(rows[1]->accessibleDescription().contains(QStringLiteral("Live")));
}

TEST(ConsoleShell, KeyOneTwiceWithinHalfASecondPutsSceneOneOnProgram) {
    Session s;
    s.storage->savePreset(createPreset("Keys", PresetTemplate::streaming));
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    root.presetSelectionView()->selectPreset(root.presetSelectionView()->presets().front());
    MainStreamingView* console = root.mainStreamingView();
    // Start from another scene in preview, with nothing on air.
    s.streamManager->switchToSceneAt(2);
    EXPECT_FALSE(s.streamManager->programScene());
    QApplication::setActiveWindow(&root);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == console; }, 2000));

    QTest::keyClick(console, Qt::Key_1);
    ASSERT_TRUE(s.streamManager->activeScene());
    EXPECT_EQ(s.streamManager->activeScene()->name, "Screen Only");
    EXPECT_FALSE(s.streamManager->programScene());
    QTest::qWait(150);
    QTest::keyClick(console, Qt::Key_1);
    ASSERT_TRUE(s.streamManager->programScene());
    EXPECT_EQ(s.streamManager->programScene()->name, "Screen Only");
    EXPECT_EQ(console->centerContent()->programHeader()->subtitle(), QStringLiteral("Screen Only"));
    ASSERT_TRUE(console->selectedScene());
    EXPECT_EQ(console->selectedScene()->name, "Screen Only");
}

TEST(ConsoleShell, DigitTypedIntoAddSceneNameReachesTheField) {
    Session s;
    s.storage->savePreset(createPreset("Typing", PresetTemplate::streaming));
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    root.presetSelectionView()->selectPreset(root.presetSelectionView()->presets().front());
    s.streamManager->switchToSceneAt(2);
    AddSceneView* sheet = root.mainStreamingView()->showAddScene();
    QApplication::setActiveWindow(sheet);
    sheet->nameField()->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == sheet->nameField(); }, 2000));

    test::LogCapture log;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_1);
    const std::string lines = log.text();
    EXPECT_EQ(sheet->nameField()->text(), QStringLiteral("11"));
    EXPECT_EQ(s.streamManager->activeScene()->name, "Webcam Focus");
    EXPECT_FALSE(s.streamManager->programScene());
    EXPECT_NE(lines.find("🎹 Text field focused, ignoring shortcut"), std::string::npos) << lines;

    QTest::mouseClick(sheet->addButton(), Qt::LeftButton);
    ASSERT_TRUE(s.streamManager->activeScene());
    EXPECT_EQ(s.streamManager->activeScene()->name, "11");
    EXPECT_EQ(s.streamManager->currentPreset()->scenes.back().name, "11");
}

TEST(ConsoleShell, StagesStackBelowEightHundredPixels) {
    Session s;
    CenterContentView center(*s.streamManager, nullptr);
    center.resize(799, 700);
    center.show();
    QApplication::processEvents();
    EXPECT_TRUE(center.isStacked());
    EXPECT_LT(center.previewStage()->mapTo(&center, QPoint()).y(), center.programStage()->mapTo(&center, QPoint()).y());
    center.resize(800, 700);
    QApplication::processEvents();
    EXPECT_FALSE(center.isStacked());
    EXPECT_LT(center.previewStage()->mapTo(&center, QPoint()).x(), center.programStage()->mapTo(&center, QPoint()).x());
}

}  // namespace
}  // namespace orvane

namespace orvane {
namespace shell_tests {

// Every control on both screens can be named by assistive technology.
TEST(ConsoleShell, EveryControlHasAnAccessibleName) {
    Session s;
    s.storage->savePreset(createPreset("Names", PresetTemplate::streaming));
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1280, 800);
    root.show();
    auto check = [&](QWidget* screen) {
        for (QWidget* w : screen->findChildren<QWidget*>()) {
            if (!qobject_cast<QAbstractButton*>(w) && !qobject_cast<QLineEdit*>(w)) continue;
            const QString name = w->accessibleName().isEmpty() && qobject_cast<QAbstractButton*>(w)
                                     ? static_cast<QAbstractButton*>(w)->text()
                                     : w->accessibleName();
            EXPECT_FALSE(name.isEmpty()) << w->metaObject()->className() << " " << w->objectName().toStdString();
        }
    };
    check(root.presetSelectionView());
    root.presetSelectionView()->selectPreset(root.presetSelectionView()->presets().front());
    check(root.mainStreamingView());
    AddSceneView* sheet = root.mainStreamingView()->showAddScene();
    check(sheet);
}

}  // namespace
}  // namespace orvane
