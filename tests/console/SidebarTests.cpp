#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "capture/LavfiCameraBackend.h"
#include "console/controls/ColorSwatchButton.h"
#include "console/controls/ConfirmDialog.h"
#include "console/controls/QuickAddButton.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/main_window/ContentView.h"
#include "console/main_window/MainStreamingView.h"
#include "console/presets/PresetSelectionView.h"
#include "console/scene_tab/GradientPresetButton.h"
#include "console/scene_tab/SceneBackgroundSection.h"
#include "console/scene_tab/SceneLayoutSection.h"
#include "console/scene_tab/SceneSourcesList.h"
#include "console/scene_tab/SceneTabView.h"
#include "console/scene_tab/SlidesSourceSection.h"
#include "console/scene_tab/SourceRowView.h"
#include "console/sheets/CameraSelectorView.h"
#include "console/sheets/CaptureListPanel.h"
#include "console/sheets/CaptureTile.h"
#include "console/sheets/ScreenSelectorView.h"
#include "console/sheets/WindowSelectorView.h"
#include "console/sidebar/RightSidebarView.h"
#include "console/sidebar/SidebarTabButton.h"
#include "console/stages/CenterContentView.h"
#include "document/PresetTemplates.h"
#include "slides/editor/SlidesEditorView.h"
#include "support/FakeCaptureBackend.h"

namespace orvane {
namespace sidebar_tests {

using test::Session;

// A fake backend whose displays have a still picture.
class PictureBackend : public test::FakeCaptureBackend {
public:
    std::optional<QImage> displayThumbnail(std::uint32_t) override {
        QImage image(320, 180, QImage::Format_RGB32);
        image.fill(Qt::blue);
        return image;
    }
};

// A session on a preset with one scene of the given layout and sources, and
// a sidebar editing that scene.
struct SidebarFixture {
    Session s;
    Preset preset;
    std::unique_ptr<RightSidebarView> sidebar;

    explicit SidebarFixture(std::vector<Source> sources = {}, SceneLayout layout = SceneLayout::fullCamera) {
        preset = createPreset("Sidebar", PresetTemplate::custom);
        StreamingScene scene = makeScene("Talk");
        scene.sources = std::move(sources);
        scene.layout = layout;
        preset.scenes = {scene};
        s.storage->savePreset(preset);
        s.streamManager->setCurrentPreset(preset);
        s.streamManager->switchToScene(scene);
        sidebar = std::make_unique<RightSidebarView>(*s.streamManager);
        sidebar->setSelectedScene(scene);
        sidebar->resize(280, 900);
        sidebar->show();
    }
    SceneTabView* tab() const { return sidebar->sceneTab(); }
    const StreamingScene& scene() const { return *tab()->scene(); }
    // The scene as the preset file on disk holds it.
    StreamingScene stored() const {
        for (const Preset& p : s.storage->loadPresets())
            if (p.id == preset.id) return p.scenes.front();
        ADD_FAILURE() << "preset file missing";
        return {};
    }
};

Source sourceOf(SourceType type, const std::string& name) {
    Source source;
    source.type = type;
    source.name = name;
    return source;
}

template <typename Sheet>
Sheet* openedSheet() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* sheet = qobject_cast<Sheet*>(w); sheet && sheet->isVisible()) return sheet;
    return nullptr;
}

TEST(ConsoleSidebar, CollapsesToAStripAndExpandsAgain) {
    SidebarFixture f;
    EXPECT_EQ(f.sidebar->width(), RightSidebarView::expandedWidth);
    QTest::mouseClick(f.sidebar->collapseButton(), Qt::LeftButton);
    EXPECT_TRUE(f.sidebar->isCollapsed());
    // The width moves over the animation rather than jumping.
    EXPECT_GT(f.sidebar->width(), RightSidebarView::collapsedWidth);
    EXPECT_TRUE(QTest::qWaitFor([&] { return f.sidebar->width() == RightSidebarView::collapsedWidth; }, 2000));
    EXPECT_TRUE(f.sidebar->collapsedTabButton(ConfigTab::remote)->isVisible());
    EXPECT_FALSE(f.sidebar->tabButton(ConfigTab::remote)->isVisible());
    EXPECT_EQ(f.sidebar->collapsedTabButton(ConfigTab::remote)->size(), QSize(50, 60));
    EXPECT_EQ(f.sidebar->expandButton()->size(), QSize(50, 44));

    // A tab symbol of the strip selects its tab and expands.
    QTest::mouseClick(f.sidebar->collapsedTabButton(ConfigTab::remote), Qt::LeftButton);
    EXPECT_FALSE(f.sidebar->isCollapsed());
    EXPECT_EQ(f.sidebar->selectedTab(), ConfigTab::remote);
    EXPECT_TRUE(f.sidebar->tabButton(ConfigTab::remote)->isSelected());
    EXPECT_FALSE(f.sidebar->tabButton(ConfigTab::scene)->isSelected());
    EXPECT_TRUE(QTest::qWaitFor([&] { return f.sidebar->width() == RightSidebarView::expandedWidth; }, 2000));
    EXPECT_EQ(f.sidebar->tabContent(ConfigTab::remote)->isVisible(), true);
}

TEST(ConsoleSidebar, SitsAtTheRightOfTheStagesInTheConsole) {
    Session s;
    s.storage->savePreset(createPreset("Console", PresetTemplate::streaming));
    ContentView root(*s.streamManager, s.windowManager);
    root.resize(1440, 900);
    root.show();
    root.presetSelectionView()->selectPreset(root.presetSelectionView()->presets().front());
    MainStreamingView* console = root.mainStreamingView();
    QApplication::processEvents();
    RightSidebarView* sidebar = console->rightSidebar();
    ASSERT_TRUE(sidebar->isVisible());
    const int stagesRight = console->centerContent()->mapTo(console, QPoint(console->centerContent()->width(), 0)).x();
    EXPECT_GE(sidebar->mapTo(console, QPoint()).x(), stagesRight);
    EXPECT_EQ(sidebar->mapTo(console, QPoint(sidebar->width(), 0)).x(), console->width());
    // The console's selection is the scene the sidebar edits.
    ASSERT_TRUE(sidebar->selectedScene());
    EXPECT_EQ(sidebar->selectedScene()->id, console->selectedScene()->id);
    EXPECT_EQ(sidebar->sceneTab()->nameField()->text().toStdString(), console->selectedScene()->name);
}

TEST(ConsoleSidebar, ABlankSceneNameIsNotStoredAndTheFieldKeepsIt) {
    SidebarFixture f;
    QLineEdit* field = f.tab()->nameField();
    EXPECT_EQ(field->text(), QStringLiteral("Talk"));
    EXPECT_EQ(field->placeholderText(), QStringLiteral("Scene name"));
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("   "));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(f.scene().name, "Talk");
    EXPECT_EQ(f.stored().name, "Talk");
    EXPECT_EQ(field->text(), QStringLiteral("   "));

    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("  Keynote \t"));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(f.scene().name, "Keynote");
    EXPECT_EQ(f.stored().name, "Keynote");
    EXPECT_EQ(f.s.streamManager->activeScene()->name, "Keynote");
}

TEST(ConsoleSidebar, GradientKeepsTheScenesColoursAndSolidWritesTheColour) {
    SidebarFixture f;
    SceneBackgroundSection* background = f.tab()->backgroundSection();
    const std::vector<CodableColor> own{{0.9, 0.1, 0.1, 1}, {0.1, 0.1, 0.9, 1}};
    f.tab()->apply([&](StreamingScene& s) {
        s.backgroundType = BackgroundType::solid;
        s.gradientColors = own;
    });
    EXPECT_TRUE(background->solidButton()->isChecked());
    EXPECT_TRUE(background->colorButton()->isVisible());
    QTest::mouseClick(background->gradientButton(), Qt::LeftButton);
    EXPECT_EQ(f.scene().backgroundType, BackgroundType::gradient);
    EXPECT_EQ(f.scene().gradientColors, own);
    EXPECT_EQ(f.stored().gradientColors, own);
    EXPECT_TRUE(background->gradientButton()->isChecked());
    EXPECT_FALSE(background->solidButton()->isChecked());
    EXPECT_FALSE(background->colorButton()->isVisible());

    // A scene without colours takes the first gradient of the row.
    f.tab()->apply([](StreamingScene& s) {
        s.backgroundType = BackgroundType::solid;
        s.gradientColors.clear();
    });
    QTest::mouseClick(background->gradientButton(), Qt::LeftButton);
    EXPECT_EQ(f.scene().gradientColors, GradientPreset::presets().front().colors);
    EXPECT_EQ(f.scene().gradientDirection, GradientPreset::presets().front().direction);
    EXPECT_TRUE(background->presetButtons().front()->isMarked());

    // A row entry copies its colours and direction; the menu writes the direction.
    GradientPresetButton* third = background->presetButtons().at(2);
    QTest::mouseClick(third, Qt::LeftButton);
    EXPECT_EQ(f.scene().gradientColors, third->preset().colors);
    EXPECT_TRUE(third->isMarked());
    QComboBox* direction = background->directionMenu();
    EXPECT_EQ(direction->count(), 7);
    EXPECT_EQ(direction->itemText(4), QStringLiteral("Diagonal \u2198"));
    direction->activated(6);
    EXPECT_EQ(f.stored().gradientDirection, GradientDirection::radial);

    // With no scene nothing is written.
    f.sidebar->setSelectedScene(std::nullopt);
    f.tab()->apply([](StreamingScene& s) { s.name = "Changed"; });
    EXPECT_EQ(f.stored().name, "Talk");
}

TEST(ConsoleSidebar, GradientsWithinAHundredthAreBothMarked) {
    SidebarFixture f;
    const GradientPreset& first = GradientPreset::presets().front();
    GradientPreset near = first;
    for (CodableColor& c : near.colors) {
        c.red = std::min(1.0, c.red + 0.005);
        c.green = std::min(1.0, c.green + 0.005);
        c.blue = std::max(0.0, c.blue - 0.005);
        c.alpha = std::max(0.0, c.alpha - 0.005);
    }
    // Two entries 0.005 apart, the scene on one of them: both are marked.
    GradientPresetButton a(first), b(near);
    for (const auto& colors : {first.colors, near.colors}) {
        EXPECT_TRUE(a.preset().matches(colors));
        EXPECT_TRUE(b.preset().matches(colors));
    }
    // And the sidebar's row marks its entry for colours 0.005 off.
    f.tab()->apply([&](StreamingScene& s) {
        s.backgroundType = BackgroundType::gradient;
        s.gradientColors = near.colors;
    });
    EXPECT_TRUE(f.tab()->backgroundSection()->presetButtons().front()->isMarked());
    EXPECT_FALSE(f.tab()->backgroundSection()->presetButtons().at(1)->isMarked());
}

TEST(ConsoleSidebar, LayoutButtonsAndCinematicZoomWriteTheScene) {
    SidebarFixture f;
    SceneLayoutSection* layout = f.tab()->layoutSection();
    SymbolButton* split = layout->buttonFor(SceneLayout::splitHorizontal);
    EXPECT_EQ(split->text(), QStringLiteral("Split 50/50"));
    EXPECT_EQ(split->symbol(), "rectangle.split.2x1.fill");
    QTest::mouseClick(split, Qt::LeftButton);
    EXPECT_EQ(f.scene().layout, SceneLayout::splitHorizontal);
    EXPECT_EQ(f.stored().layout, SceneLayout::splitHorizontal);
    QTest::mouseClick(layout->cinematicZoomSwitch(), Qt::LeftButton);
    EXPECT_TRUE(f.stored().cinematicZoomEnabled);
    EXPECT_TRUE(layout->cinematicZoomSwitch()->isChecked());
    QTest::mouseClick(layout->cinematicZoomSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.stored().cinematicZoomEnabled);
}

TEST(ConsoleSidebar, ACameraJoiningOnlyACameraKeepsTheLayout) {
    SidebarFixture f({sourceOf(SourceType::camera, "Front")}, SceneLayout::fullCamera);
    f.tab()->addCameraSource(CameraDevice{QStringLiteral("/dev/video2"), QStringLiteral("Side")});
    EXPECT_EQ(f.stored().layout, SceneLayout::fullCamera);
    ASSERT_EQ(f.stored().sources.size(), 2u);
    EXPECT_EQ(f.stored().sources.back().configuration.cameraDeviceId, "/dev/video2");

    SidebarFixture withScreen({sourceOf(SourceType::screen, "Main Display")}, SceneLayout::fullCamera);
    withScreen.tab()->addCameraSource(CameraDevice{QStringLiteral("/dev/video0"), QStringLiteral("Cam")});
    EXPECT_EQ(withScreen.stored().layout, SceneLayout::pipBottomRight);
}

TEST(ConsoleSidebar, SlidesAreNumberedByTheSlidesTheSceneHolds) {
    SidebarFixture f;
    QTest::mouseClick(f.tab()->addSlidesButton(), Qt::LeftButton);
    QTest::mouseClick(f.tab()->addSlidesButton(), Qt::LeftButton);
    ASSERT_EQ(f.stored().sources.size(), 2u);
    EXPECT_EQ(f.stored().sources[0].name, "Slides 1");
    EXPECT_EQ(f.stored().sources[1].name, "Slides 2");
    const StreamingScene afterTwo = f.stored();
    const Source& deck = afterTwo.sources[1];
    EXPECT_EQ(deck.type, SourceType::content);
    EXPECT_EQ(deck.configuration.contentType, ContentType::slides);
    ASSERT_TRUE(deck.configuration.slidesResource);
    ASSERT_EQ(deck.configuration.slidesResource->slides.size(), 1u);
    EXPECT_EQ(deck.configuration.slidesResource->slides.front().content,
              "# Welcome to Slides\n\nStart creating your presentation!");
    EXPECT_EQ(f.stored().selectedSourceId, deck.id);

    f.tab()->deleteSource(f.stored().sources[0].id);
    QTest::mouseClick(f.tab()->addSlidesButton(), Qt::LeftButton);
    ASSERT_EQ(f.stored().sources.size(), 2u);
    EXPECT_EQ(f.stored().sources[1].name, "Slides 2");
}

TEST(ConsoleSidebar, TheSlidesBlockEditsTheSelectedDeckAndWritesItBack) {
    SidebarFixture f;
    SlidesSourceSection* block = f.tab()->slidesSection();
    EXPECT_FALSE(block->isVisibleTo(f.sidebar.get()));
    f.tab()->addScreenSource(CaptureDisplay{7, 1920, 1080, QStringLiteral("Main Display"), {}});
    EXPECT_FALSE(block->isVisibleTo(f.sidebar.get()));
    f.tab()->addSlidesSource();
    ASSERT_TRUE(block->isVisibleTo(f.sidebar.get()));
    EXPECT_EQ(block->editButton()->accessibleName(), QStringLiteral("Edit Slides"));
    EXPECT_TRUE(block->editButton()->text().endsWith(QStringLiteral("1 slide")));

    // The editor works on a copy; closing it writes the deck into the source.
    bool sawEditor = false;
    QTimer::singleShot(0, [&] {
        auto* editor = openedSheet<SlidesEditorView>();
        ASSERT_NE(editor, nullptr);
        sawEditor = true;
        editor->addNewSlide();
        editor->accept();
    });
    QTest::mouseClick(block->editButton(), Qt::LeftButton);
    EXPECT_TRUE(sawEditor);
    const StreamingScene stored = f.stored();
    const Source& deck = stored.sources[1];
    ASSERT_TRUE(deck.configuration.slidesResource);
    EXPECT_EQ(deck.configuration.slidesResource->slides.size(), 2u);
    EXPECT_EQ(stored.sources[0].name, "Main Display");
    EXPECT_TRUE(block->editButton()->text().endsWith(QStringLiteral("2 slides")));
}

TEST(ConsoleSidebar, SourcesAreListedSelectedAndDeletedAfterConfirmation) {
    SidebarFixture f;
    SceneSourcesList* list = f.tab()->sourcesList();
    EXPECT_TRUE(list->rows().empty());
    f.tab()->addScreenSource(CaptureDisplay{7, 1920, 1080, QStringLiteral("Main Display"), {}});
    f.tab()->addSlidesSource();
    f.tab()->addWindowSource(CaptureWindow{42, QStringLiteral("Notes"), QStringLiteral("Editor"), 0, {}});
    ASSERT_EQ(list->rows().size(), 3u);
    EXPECT_TRUE(list->rows()[2]->isSelected());
    EXPECT_EQ(SourceRowView::typeTitle(SourceType::screen), QStringLiteral("Screen"));
    EXPECT_EQ(list->rows()[0]->accessibleName(), QStringLiteral("Main Display"));

    QTest::mouseClick(list->rows()[1], Qt::LeftButton);
    EXPECT_EQ(f.stored().selectedSourceId, f.stored().sources[1].id);
    EXPECT_TRUE(list->rows()[1]->isSelected());

    // Deleting the selected source moves the selection to the first one left.
    ConfirmDialog* alert = list->rows()[1]->confirmDelete();
    EXPECT_EQ(alert->title(), QStringLiteral("Delete Source"));
    EXPECT_EQ(alert->message(), QStringLiteral("Remove 'Slides 1' from this scene?"));
    ASSERT_EQ(alert->cancelButton()->text(), QStringLiteral("Cancel"));
    ASSERT_EQ(alert->destructiveButton()->text(), QStringLiteral("Delete"));
    QTest::mouseClick(alert->cancelButton(), Qt::LeftButton);
    EXPECT_EQ(f.stored().sources.size(), 3u);
    alert = list->rows()[1]->confirmDelete();
    QTest::mouseClick(alert->destructiveButton(), Qt::LeftButton);
    ASSERT_EQ(f.stored().sources.size(), 2u);
    EXPECT_EQ(f.stored().sources[1].name, "Notes");
    EXPECT_EQ(f.stored().selectedSourceId, f.stored().sources[0].id);
    EXPECT_EQ(list->rows().size(), 2u);

    // Deleting the rest clears the selection and shows the empty note.
    f.tab()->deleteSource(f.stored().sources[0].id);
    f.tab()->deleteSource(f.stored().sources[0].id);
    EXPECT_TRUE(f.stored().sources.empty());
    EXPECT_FALSE(f.stored().selectedSourceId);
    EXPECT_TRUE(list->rows().empty());
}

TEST(ConsoleSidebar, WithoutASceneTheTabSaysSoAndAddsNothing) {
    SidebarFixture f;
    f.sidebar->setSelectedScene(std::nullopt);
    EXPECT_FALSE(f.tab()->addSlidesButton()->isVisible());
    EXPECT_FALSE(f.tab()->nameField()->isVisible());
    f.tab()->addSlidesSource();
    f.tab()->addScreenSource(CaptureDisplay{1, 800, 600, QStringLiteral("Main Display"), {}});
    EXPECT_TRUE(f.stored().sources.empty());
    bool found = false;
    for (QLabel* l : f.tab()->findChildren<QLabel*>())
        if (l->isVisible() && l->text() == QStringLiteral("Add scene to add sources")) found = true;
    EXPECT_TRUE(found);
}

TEST(ConsoleSidebar, AScreenIsAddedThroughTheDisplaySheet) {
    SidebarFixture f;
    PictureBackend backend;
    backend.displayList = {CaptureDisplay{11, 2560, 1440, QStringLiteral("Main Display"), {}},
                           CaptureDisplay{12, 1280, 1024, QStringLiteral("Display 12"), {}}};
    f.sidebar->setCaptureBackends(&backend, nullptr);
    QTest::mouseClick(f.tab()->addScreenButton(), Qt::LeftButton);
    auto* sheet = openedSheet<ScreenSelectorView>();
    ASSERT_TRUE(sheet);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->body()->state() == CaptureListPanel::State::list; }, 5000));
    const auto& tiles = sheet->body()->tiles();
    ASSERT_EQ(tiles.size(), 2u);
    EXPECT_EQ(tiles[0]->text(), QStringLiteral("Main Display"));
    EXPECT_EQ(tiles[0]->detail(), QStringLiteral("2560 × 1440"));
    EXPECT_EQ(tiles[0]->badge(), QStringLiteral("PRIMARY"));
    EXPECT_TRUE(tiles[1]->badge().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return tiles[1]->hasThumbnail(); }, 2000));
    QTest::mouseClick(tiles[1], Qt::LeftButton);
    EXPECT_FALSE(sheet->isVisible());

    const StreamingScene stored = f.stored();
    ASSERT_EQ(stored.sources.size(), 1u);
    const Source& screen = stored.sources.front();
    EXPECT_EQ(screen.type, SourceType::screen);
    EXPECT_EQ(screen.name, "Display 12");
    EXPECT_EQ(screen.configuration.screenId, 12u);
    EXPECT_EQ(stored.selectedSourceId, screen.id);
}

TEST(ConsoleSidebar, TheDisplaySheetShowsFailuresAndRetries) {
    SidebarFixture f;
    test::FakeCaptureBackend backend;
    backend.listingError = QStringLiteral("Error loading displays: no server");
    f.sidebar->setCaptureBackends(&backend, nullptr);
    ScreenSelectorView* sheet = f.tab()->showScreenSelector();
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->body()->state() == CaptureListPanel::State::error; }, 5000));
    EXPECT_TRUE(sheet->body()->message().contains(QStringLiteral("no server")));
    EXPECT_FALSE(sheet->body()->settingsButton()->isVisible());
    backend.listingError.clear();
    QTest::mouseClick(sheet->body()->retryButton(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->body()->state() == CaptureListPanel::State::empty; }, 5000));
    EXPECT_EQ(sheet->body()->message(), QStringLiteral("No displays found"));
    sheet->close();
    EXPECT_TRUE(f.stored().sources.empty());
}

TEST(ConsoleSidebar, AWindowIsFoundBySearchAndAdded) {
    SidebarFixture f;
    test::FakeCaptureBackend backend;
    backend.windowList = {ShareableWindow{5, QStringLiteral("Quarterly report"), QStringLiteral("Writer"), 0,
                                          QRect(0, 0, 800, 600)},
                          ShareableWindow{6, QString(), QStringLiteral("Terminal"), 0, QRect(0, 0, 640, 480)},
                          ShareableWindow{7, QStringLiteral("Menu"), QStringLiteral("Panel"), 5, QRect()}};
    f.sidebar->setCaptureBackends(&backend, nullptr);
    QTest::mouseClick(f.tab()->addWindowButton(), Qt::LeftButton);
    auto* sheet = openedSheet<WindowSelectorView>();
    ASSERT_TRUE(sheet);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->body()->state() == CaptureListPanel::State::list; }, 5000));
    ASSERT_EQ(sheet->body()->tiles().size(), 2u);  // the layer-5 window is not offered
    EXPECT_EQ(sheet->body()->tiles()[0]->text(), QStringLiteral("Terminal"));

    // The search spans the owner, " - " and the title.
    EXPECT_FALSE(sheet->clearSearchButton()->isVisible());
    QTest::keyClicks(sheet->searchField(), QStringLiteral("writer - QUART"));
    ASSERT_EQ(sheet->body()->tiles().size(), 1u);
    EXPECT_TRUE(sheet->clearSearchButton()->isVisible());
    QTest::keyClicks(sheet->searchField(), QStringLiteral("zzz"));
    EXPECT_EQ(sheet->body()->state(), CaptureListPanel::State::empty);
    EXPECT_EQ(sheet->body()->message(), QStringLiteral("No windows found"));
    QTest::mouseClick(sheet->clearSearchButton(), Qt::LeftButton);
    EXPECT_TRUE(sheet->searchField()->text().isEmpty());
    ASSERT_EQ(sheet->body()->tiles().size(), 2u);
    QTest::keyClicks(sheet->searchField(), QStringLiteral("report"));
    ASSERT_EQ(sheet->body()->tiles().size(), 1u);
    QTest::mouseClick(sheet->body()->tiles()[0], Qt::LeftButton);

    const StreamingScene stored = f.stored();
    ASSERT_EQ(stored.sources.size(), 1u);
    const Source& window = stored.sources.front();
    EXPECT_EQ(window.type, SourceType::window);
    EXPECT_EQ(window.name, "Quarterly report");
    EXPECT_EQ(window.configuration.windowId, 5u);
    EXPECT_EQ(window.configuration.windowTitle, "Quarterly report");
    EXPECT_EQ(window.configuration.windowOwner, "Writer");
}

TEST(ConsoleSidebar, AnEmptyWindowListSaysNoWindowsAvailable) {
    SidebarFixture f;
    test::FakeCaptureBackend backend;
    f.sidebar->setCaptureBackends(&backend, nullptr);
    WindowSelectorView* sheet = f.tab()->showWindowSelector();
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->body()->state() == CaptureListPanel::State::empty; }, 5000));
    EXPECT_EQ(sheet->body()->message(), QStringLiteral("No windows available"));
    sheet->close();
}

TEST(ConsoleSidebar, ACameraIsAddedThroughTheCameraSheet) {
    SidebarFixture f;
    LavfiCameraBackend cameras({{CameraDevice{QStringLiteral("lavfi:bars"), QStringLiteral("Test Bars")},
                                 QStringLiteral("smptebars=size=320x240:rate=30")}});
    f.sidebar->setCaptureBackends(nullptr, &cameras);
    QTest::mouseClick(f.tab()->addCameraButton(), Qt::LeftButton);
    auto* sheet = openedSheet<CameraSelectorView>();
    ASSERT_TRUE(sheet);
    ASSERT_EQ(sheet->body()->tiles().size(), 1u);
    QTest::mouseClick(sheet->body()->tiles()[0], Qt::LeftButton);
    ASSERT_EQ(f.stored().sources.size(), 1u);
    EXPECT_EQ(f.stored().sources[0].type, SourceType::camera);
    EXPECT_EQ(f.stored().sources[0].name, "Test Bars");
    EXPECT_EQ(f.stored().sources[0].configuration.cameraDeviceId, "lavfi:bars");

    // No cameras: the sheet says so.
    f.sidebar->setCaptureBackends(nullptr, nullptr);
    CameraSelectorView* none = f.tab()->showCameraSelector();
    EXPECT_EQ(none->body()->state(), CaptureListPanel::State::empty);
    EXPECT_EQ(none->body()->message(), QStringLiteral("No cameras found"));
    none->close();
}

}  // namespace
}  // namespace orvane
