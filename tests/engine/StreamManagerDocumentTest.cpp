// The document operations of the session: switching, adding, updating and
// deleting scenes, the toggles and the eraser's path removal.

#include <QSignalSpy>

#include <gtest/gtest.h>

#include "document/PresetTemplates.h"
#include "engine/StreamManager.h"
#include "support/LogCapture.h"
#include "support/SessionTest.h"

namespace orvane {
namespace stream_manager_document_test {

using test::LogCapture;
using test::SessionTest;

const QString lastSelectedKey = QStringLiteral("last_selected_preset");

Source windowSource(std::optional<std::uint32_t> windowId) {
    Source source;
    source.type = SourceType::window;
    source.name = "Browser";
    source.configuration.windowId = windowId;
    return source;
}

// ------------------------------------------------------------ the saving rule

TEST_F(SessionTest, EveryAssignmentOfAPresetSavesAtOnce) {
    LogCapture log;
    Preset copy = *session->currentPreset();
    copy.name = "Renamed";
    session->setCurrentPreset(copy);
    EXPECT_EQ(home.readPresetFile(preset)->name, "Renamed");  // synchronously on disk
    session->setCurrentPreset(copy);                        // same value: written again
    EXPECT_EQ(log.count("✅ Preset saved: Renamed"), 2);
}

TEST_F(SessionTest, AssigningNothingSavesNothing) {
    LogCapture log;
    QSignalSpy changed(session.get(), &StreamManager::currentPresetChanged);
    session->setCurrentPreset(std::nullopt);
    EXPECT_EQ(log.count("✅ Preset saved: "), 0);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(session->currentPreset());
    EXPECT_TRUE(home.readPresetFile(preset));  // the file stays
}

// ------------------------------------------------------------ switchToScene

TEST_F(SessionTest, SwitchTakesTheDocumentsSceneSavesAndRemembersThePreset) {
    home.setSettingsValue(lastSelectedKey, QString());
    StreamingScene argument = scene(1);
    argument.name = "stale copy";
    QSignalSpy timestamp(session.get(), &StreamManager::sceneUpdateTimestampChanged);
    QSignalSpy program(session.get(), &StreamManager::programSceneChanged);
    LogCapture log;

    session->switchToScene(argument);

    EXPECT_EQ(session->activeScene()->name, "B");  // the element, not the argument
    EXPECT_EQ(session->currentPreset()->activeSceneId, argument.id);
    EXPECT_EQ(log.count("✅ Preset saved: Show"), 1);
    EXPECT_EQ(home.readPresetFile(preset)->activeSceneId, argument.id);
    EXPECT_EQ(home.settingsValue(lastSelectedKey), QString::fromStdString(preset.id.toString()));
    EXPECT_EQ(home.settingsValue(lastSelectedKey), home.settingsValue(lastSelectedKey).toUpper());
    EXPECT_EQ(session->programScene()->id, scene(0).id);
    EXPECT_EQ(program.count(), 0);
    EXPECT_EQ(timestamp.count(), 0);
}

TEST_F(SessionTest, SwitchToASceneNoLongerInThePresetShowsItAndSavesNothing) {
    home.setSettingsValue(lastSelectedKey, QStringLiteral("untouched"));
    const StreamingScene outsider = makeScene("Gone");
    LogCapture log;
    session->switchToScene(outsider);
    EXPECT_EQ(session->activeScene()->id, outsider.id);
    EXPECT_EQ(session->activeScene()->name, "Gone");
    EXPECT_EQ(log.count("✅ Preset saved: "), 0);
    EXPECT_EQ(session->currentPreset()->activeSceneId, scene(0).id);
    EXPECT_EQ(home.settingsValue(lastSelectedKey), QStringLiteral("untouched"));
}

TEST(StreamManagerNoPreset, SwitchWithoutPresetOnlyShowsTheScene) {
    test::TestHome home;
    auto session = home.startSession();
    const StreamingScene loose = makeScene("Loose");
    LogCapture log;
    session->switchToScene(loose);
    EXPECT_EQ(session->activeScene()->id, loose.id);
    EXPECT_TRUE(log.finish().empty());
    EXPECT_TRUE(home.presetFileNames().empty());
}

TEST_F(SessionTest, SwitchToSceneAtTakesThePlaceInThePreset) {
    EXPECT_TRUE(session->switchToSceneAt(2));
    EXPECT_EQ(session->activeScene()->name, "C");
    EXPECT_FALSE(session->switchToSceneAt(3));
    EXPECT_FALSE(session->switchToSceneAt(-1));
    EXPECT_EQ(session->activeScene()->name, "C");
}

// ------------------------------------------------------------ addScene

TEST_F(SessionTest, AddAppendsWithOneWriteAndDoesNotSelect) {
    const StreamingScene added = makeScene("D", "star.fill");
    LogCapture log;
    session->addScene(added);
    ASSERT_EQ(session->currentPreset()->scenes.size(), 4u);
    EXPECT_EQ(scene(3).id, added.id);
    EXPECT_EQ(session->activeScene()->id, scene(0).id);
    EXPECT_EQ(log.count("✅ Preset saved: Show"), 1);
    EXPECT_EQ(home.readPresetFile(preset)->scenes.size(), 4u);
}

TEST(StreamManagerNoPreset, AddWithoutPresetDoesNothing) {
    test::TestHome home;
    auto session = home.startSession();
    session->addScene(makeScene("D"));
    EXPECT_FALSE(session->currentPreset());
    EXPECT_TRUE(home.presetFileNames().empty());
}

// ------------------------------------------------------------ updateScene

TEST_F(SessionTest, UpdateWritesTwiceRefreshesTheActiveSceneAndLogs) {
    StreamingScene edited = scene(0);
    edited.name = "A edited";
    edited.sources.push_back(windowSource(7));
    edited.sources.push_back(Source{});
    QSignalSpy timestamp(session.get(), &StreamManager::sceneUpdateTimestampChanged);
    const QDateTime before = session->sceneUpdateTimestamp();
    LogCapture log;

    session->updateScene(edited);

    EXPECT_EQ(log.count("✅ Preset saved: Show"), 2);
    EXPECT_EQ(log.sessionLines(), std::vector<std::string>{"🔄 Scene updated: A edited, sources: 2"});
    EXPECT_EQ(scene(0).name, "A edited");
    EXPECT_EQ(session->activeScene()->name, "A edited");
    EXPECT_EQ(timestamp.count(), 1);
    EXPECT_GE(session->sceneUpdateTimestamp(), before);
    const auto onDisk = home.readPresetFile(preset);
    EXPECT_EQ(onDisk->scenes[0].sources.size(), 2u);
}

TEST_F(SessionTest, UpdateOfAnotherSceneLeavesTheActiveSceneAlone) {
    StreamingScene edited = scene(2);
    edited.layout = SceneLayout::splitHorizontal;
    session->updateScene(edited);
    EXPECT_EQ(scene(2).layout, SceneLayout::splitHorizontal);
    EXPECT_EQ(session->activeScene()->id, scene(0).id);
}

TEST_F(SessionTest, UpdateOfAnUnknownSceneDoesNothingAtAll) {
    QSignalSpy timestamp(session.get(), &StreamManager::sceneUpdateTimestampChanged);
    QSignalSpy presetChanged(session.get(), &StreamManager::currentPresetChanged);
    LogCapture log;
    session->updateScene(makeScene("Stranger"));
    EXPECT_TRUE(log.finish().empty());
    EXPECT_EQ(timestamp.count(), 0);
    EXPECT_EQ(presetChanged.count(), 0);
}

// ------------------------------------------------------------ deleteScene

TEST_F(SessionTest, DeletingTheActiveSceneActivatesTheFirstRemaining) {
    session->switchToScene(scene(1));
    const StreamingScene doomed = scene(1);
    LogCapture log;
    session->deleteScene(doomed);
    ASSERT_EQ(session->currentPreset()->scenes.size(), 2u);
    EXPECT_EQ(session->activeScene()->name, "A");
    EXPECT_EQ(session->currentPreset()->activeSceneId, scene(0).id);
    EXPECT_EQ(log.count("✅ Preset saved: Show"), 1);
    EXPECT_EQ(home.readPresetFile(preset)->scenes.size(), 2u);
}

TEST_F(SessionTest, DeletingAnotherSceneKeepsTheActiveOne) {
    session->deleteScene(scene(2));
    EXPECT_EQ(session->activeScene()->name, "A");
    EXPECT_EQ(session->currentPreset()->activeSceneId, scene(0).id);
}

TEST_F(SessionTest, DeletingTheLastSceneLeavesTheActiveSceneSet) {
    const StreamingScene a = scene(0);
    session->deleteScene(scene(2));
    session->deleteScene(scene(1));
    session->deleteScene(a);
    EXPECT_TRUE(session->currentPreset()->scenes.empty());
    ASSERT_TRUE(session->activeScene());
    EXPECT_EQ(session->activeScene()->id, a.id);
    EXPECT_EQ(session->currentPreset()->activeSceneId, a.id);
    // The program is never touched: the deleted scene stays on air.
    ASSERT_TRUE(session->programScene());
    EXPECT_EQ(session->programScene()->id, a.id);
}

TEST(StreamManagerNoPreset, DeleteWithoutPresetDoesNothing) {
    test::TestHome home;
    auto session = home.startSession();
    session->deleteScene(makeScene("X"));
    EXPECT_FALSE(session->currentPreset());
}

// ------------------------------------------------------------ toggles

TEST_F(SessionTest, BlurToggleFlipsLogsAndStampsButStoresNothing) {
    QSignalSpy timestamp(session.get(), &StreamManager::sceneUpdateTimestampChanged);
    LogCapture log;
    session->toggleBlurMode();
    EXPECT_TRUE(session->isBlurModeActive());
    session->toggleBlurMode();
    EXPECT_FALSE(session->isBlurModeActive());
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"🔒 Blur mode activated", "🔒 Blur mode deactivated"}));
    EXPECT_EQ(log.count("✅ Preset saved: "), 0);
    EXPECT_EQ(timestamp.count(), 2);
}

TEST_F(SessionTest, DrawingModeOffHidesTheToolbarOnDoesNotShowIt) {
    session->drawing().setShowDrawingToolbar(true);
    session->drawing().toggleDrawingMode();  // on
    EXPECT_TRUE(session->drawing().isDrawingModeEnabled());
    EXPECT_TRUE(session->drawing().showDrawingToolbar());
    session->drawing().toggleDrawingMode();  // off
    EXPECT_FALSE(session->drawing().isDrawingModeEnabled());
    EXPECT_FALSE(session->drawing().showDrawingToolbar());
    session->drawing().toggleDrawingMode();  // on again
    EXPECT_FALSE(session->drawing().showDrawingToolbar());
}

TEST_F(SessionTest, DrawingsSurviveDrawingModeOffAndOn) {
    DrawingShape shape;
    shape.startPoint = {1, 2};
    shape.endPoint = {30, 40};
    FreehandPath path;
    path.points = {{5, 5}, {6, 6}};
    session->drawing().setDrawingShapes({shape});
    session->drawing().setFreehandPaths({path});
    session->drawing().toggleDrawingMode();
    session->drawing().toggleDrawingMode();
    ASSERT_EQ(session->drawing().drawingShapes().size(), 1u);
    EXPECT_EQ(session->drawing().drawingShapes()[0].id, shape.id);
    ASSERT_EQ(session->drawing().freehandPaths().size(), 1u);
    EXPECT_EQ(session->drawing().freehandPaths()[0].id, path.id);
}

TEST_F(SessionTest, FreehandPathsWithAPointWithinTheRadiusAreRemoved) {
    FreehandPath onEdge;   // a point at exactly the radius
    onEdge.points = {{100, 100}, {13, 16}};
    FreehandPath far;      // segment crosses the circle, points do not
    far.points = {{-100, 10}, {100, 10}};
    FreehandPath inside;
    inside.points = {{10, 10}};
    FreehandPath beyond;
    beyond.points = {{15.01, 12}, {10, 17.01}};  // just over 5 away
    session->drawing().setFreehandPaths({onEdge, far, inside, beyond});
    QSignalSpy changed(&session->drawing(), &DrawingState::freehandPathsChanged);

    session->drawing().removeFreehandPathsIntersecting({10, 12}, 5);  // (13,16) is at distance 5

    ASSERT_EQ(session->drawing().freehandPaths().size(), 2u);
    EXPECT_EQ(session->drawing().freehandPaths()[0].id, far.id);
    EXPECT_EQ(session->drawing().freehandPaths()[1].id, beyond.id);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(SessionTest, RemovingFreehandPathsNeverTouchesShapes) {
    DrawingShape line;  // zero length, right at the point
    line.startPoint = line.endPoint = {10, 10};
    session->drawing().setDrawingShapes({line});
    session->drawing().removeFreehandPathsIntersecting({10, 10}, 20);
    EXPECT_EQ(session->drawing().drawingShapes().size(), 1u);
}

}  // namespace
}  // namespace orvane
