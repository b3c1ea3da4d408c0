// The session's published state: every field is a notifying property with
// its initial value, and the outward update signal fires for its four fields.

#include <QMetaProperty>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "document/PresetTemplates.h"
#include "engine/PerformanceMonitor.h"
#include "engine/StreamManager.h"
#include "support/TestHome.h"

namespace orvane {
namespace stream_manager_properties_test {

using test::TestHome;

const char* const publishedFields[] = {
    "currentPreset", "activeScene", "sceneUpdateTimestamp", "progressBarUpdateTimestamp", "programScene",
    "isTransitioning", "isRecording", "isStreaming", "isProgramWindowOpen", "showCursor", "cursorHighlight",
    "showClicks", "cursorHighlightColor", "globalMouseLocation", "isMouseOverMainWindow", "lastClickPosition",
    "clickTimestamp", "mainWindowSize", "showPerformanceStats", "programWindowAlwaysOnTop",
    "isDrawingModeEnabled", "selectedDrawingTool", "selectedDrawingColor", "drawingStrokeWidth",
    "drawingShapes", "freehandPaths", "showDrawingToolbar", "drawingButtonPosition", "showDrawingButton",
    "isBlurModeActive", "streamQuality", "webServerManager",
};

class PublishedField : public ::testing::TestWithParam<const char*> {};

TEST_P(PublishedField, IsAPropertyWithANotifySignal) {
    const QMetaObject& meta = StreamManager::staticMetaObject;
    const int index = meta.indexOfProperty(GetParam());
    ASSERT_GE(index, 0) << GetParam();
    const QMetaProperty property = meta.property(index);
    EXPECT_TRUE(property.hasNotifySignal()) << GetParam();
    EXPECT_TRUE(property.isReadable());
}

INSTANTIATE_TEST_SUITE_P(StreamManager, PublishedField, ::testing::ValuesIn(publishedFields));

TEST(StreamManagerProperties, PerformanceMonitorIsConstant) {
    const QMetaObject& meta = StreamManager::staticMetaObject;
    const QMetaProperty property = meta.property(meta.indexOfProperty("performanceMonitor"));
    EXPECT_TRUE(property.isConstant());
}

TEST(StreamManagerProperties, InitialValues) {
    TestHome home;
    const QDateTime before = QDateTime::currentDateTimeUtc();
    auto s = home.startSession();
    EXPECT_FALSE(s->isTransitioning());
    EXPECT_FALSE(s->isRecording());
    EXPECT_FALSE(s->isStreaming());
    EXPECT_FALSE(s->isProgramWindowOpen());
    EXPECT_TRUE(s->showCursor());
    EXPECT_FALSE(s->cursorHighlight());
    EXPECT_FALSE(s->showClicks());
    EXPECT_EQ(s->cursorHighlightColor(), (CodableColor{1, 1, 0, 1}));
    EXPECT_EQ(s->globalMouseLocation(), (Point{0, 0}));
    EXPECT_FALSE(s->isMouseOverMainWindow());
    EXPECT_EQ(s->lastClickPosition(), (Point{0, 0}));
    EXPECT_GE(s->clickTimestamp(), before.addSecs(-1));
    EXPECT_GE(s->sceneUpdateTimestamp(), before.addSecs(-1));
    EXPECT_GE(s->progressBarUpdateTimestamp(), before.addSecs(-1));
    EXPECT_EQ(s->mainWindowSize(), (Size{0, 0}));
    EXPECT_FALSE(s->showPerformanceStats());
    EXPECT_FALSE(s->programWindowAlwaysOnTop());
    EXPECT_FALSE(s->isDrawingModeEnabled());
    EXPECT_EQ(s->selectedDrawingTool(), DrawingTool::line);
    EXPECT_EQ(s->selectedDrawingColor(), (DrawingColor{1, 0, 0, 1}));
    EXPECT_EQ(s->drawingStrokeWidth(), 3.0);
    EXPECT_TRUE(s->drawingShapes().empty());
    EXPECT_TRUE(s->freehandPaths().empty());
    EXPECT_FALSE(s->showDrawingToolbar());
    EXPECT_EQ(s->drawingButtonPosition(), DrawingButtonPosition::bottomRight);
    EXPECT_FALSE(s->showDrawingButton());
    EXPECT_FALSE(s->isBlurModeActive());
    EXPECT_EQ(s->streamQuality(), StreamQuality::balanced);
}

TEST(StreamManagerProperties, ReadableAndWritableThroughTheMetaObject) {
    TestHome home;
    auto s = home.startSession();
    QSignalSpy blur(s.get(), &StreamManager::isBlurModeActiveChanged);
    EXPECT_TRUE(s->setProperty("isBlurModeActive", true));
    EXPECT_TRUE(s->isBlurModeActive());
    EXPECT_EQ(blur.count(), 1);
    EXPECT_TRUE(s->setProperty("streamQuality", QVariant::fromValue(StreamQuality::maximum)));
    EXPECT_EQ(s->property("streamQuality").value<StreamQuality>(), StreamQuality::maximum);
    const auto preset = s->property("currentPreset").value<std::optional<Preset>>();
    EXPECT_FALSE(preset);
}

TEST(StreamManagerProperties, PlainValuesNotifyOnlyWhenTheyChange) {
    TestHome home;
    auto s = home.startSession();
    QSignalSpy cursor(s.get(), &StreamManager::showCursorChanged);
    s->setShowCursor(true);
    EXPECT_EQ(cursor.count(), 0);
    s->setShowCursor(false);
    EXPECT_EQ(cursor.count(), 1);
    EXPECT_EQ(cursor.at(0).at(0).toBool(), false);
}

TEST(StreamManagerProperties, UpdateSignalFiresForItsFourFieldsOnly) {
    TestHome home;
    auto s = home.startSession();
    QSignalSpy update(s.get(), &StreamManager::streamManagerUpdate);

    s->setProgressBarUpdateTimestamp(QDateTime::currentDateTimeUtc());
    EXPECT_EQ(update.count(), 1);
    s->setProgramScene(makeScene("On air"));
    EXPECT_EQ(update.count(), 2);
    s->setIsDrawingModeEnabled(true);
    EXPECT_EQ(update.count(), 3);
    s->setShowDrawingButton(true);
    EXPECT_EQ(update.count(), 4);

    s->setShowDrawingToolbar(true);
    s->setActiveScene(makeScene("Preview"));
    s->setSceneUpdateTimestamp(QDateTime::currentDateTimeUtc());
    s->setIsBlurModeActive(true);
    s->setShowCursor(false);
    s->setIsRecording(true);
    EXPECT_EQ(update.count(), 4);
}

TEST(StreamManagerProperties, ManagersJoinAsChildren) {
    TestHome home;
    auto s = home.startSession();
    QSignalSpy changed(s.get(), &StreamManager::webServerManagerChanged);
    auto* server = new QObject;
    auto* prompter = new QObject;
    auto* recorder = new QObject;
    s->setWebServerManager(server);
    s->setTeleprompterManager(prompter);
    s->setRecordingManager(recorder);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(s->webServerManager(), server);
    EXPECT_EQ(server->parent(), s.get());
    EXPECT_EQ(prompter->parent(), s.get());
    EXPECT_EQ(recorder->parent(), s.get());
    delete recorder;  // a manager gone is seen as gone
    EXPECT_EQ(s->recordingManager(), nullptr);
}

}  // namespace
}  // namespace orvane
