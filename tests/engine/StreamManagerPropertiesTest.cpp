// The session's published state: every field is a notifying property with
// its initial value, on the session core or on the part that holds it, and
// the outward update signal fires for its four fields.

#include <QMetaProperty>
#include <QPointer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "document/PresetTemplates.h"
#include "engine/PerformanceMonitor.h"
#include "engine/StreamManager.h"
#include "support/TestHome.h"

namespace orvane {
namespace stream_manager_properties_test {

using test::TestHome;

// Each published name with the object that publishes it: the session core
// or one of its parts.
struct Published {
    const QMetaObject* owner;
    const char* name;
};

const Published publishedFields[] = {
    {&StreamManager::staticMetaObject, "currentPreset"},
    {&StreamManager::staticMetaObject, "activeScene"},
    {&StreamManager::staticMetaObject, "sceneUpdateTimestamp"},
    {&StreamManager::staticMetaObject, "progressBarUpdateTimestamp"},
    {&StreamManager::staticMetaObject, "programScene"},
    {&StreamManager::staticMetaObject, "isTransitioning"},
    {&StreamManager::staticMetaObject, "isRecording"},
    {&StreamManager::staticMetaObject, "isStreaming"},
    {&ProgramWindowController::staticMetaObject, "isProgramWindowOpen"},
    {&PointerState::staticMetaObject, "showCursor"},
    {&PointerState::staticMetaObject, "cursorHighlight"},
    {&PointerState::staticMetaObject, "showClicks"},
    {&PointerState::staticMetaObject, "cursorHighlightColor"},
    {&PointerState::staticMetaObject, "globalMouseLocation"},
    {&PointerState::staticMetaObject, "isMouseOverMainWindow"},
    {&PointerState::staticMetaObject, "lastClickPosition"},
    {&PointerState::staticMetaObject, "clickTimestamp"},
    {&PointerState::staticMetaObject, "mainWindowSize"},
    {&StreamManager::staticMetaObject, "showPerformanceStats"},
    {&ProgramWindowController::staticMetaObject, "programWindowAlwaysOnTop"},
    {&DrawingState::staticMetaObject, "isDrawingModeEnabled"},
    {&DrawingState::staticMetaObject, "selectedDrawingTool"},
    {&DrawingState::staticMetaObject, "selectedDrawingColor"},
    {&DrawingState::staticMetaObject, "drawingStrokeWidth"},
    {&DrawingState::staticMetaObject, "drawingShapes"},
    {&DrawingState::staticMetaObject, "freehandPaths"},
    {&DrawingState::staticMetaObject, "showDrawingToolbar"},
    {&DrawingState::staticMetaObject, "drawingButtonPosition"},
    {&DrawingState::staticMetaObject, "showDrawingButton"},
    {&StreamManager::staticMetaObject, "isBlurModeActive"},
    {&StreamManager::staticMetaObject, "streamQuality"},
};

class PublishedField : public ::testing::TestWithParam<Published> {};

TEST_P(PublishedField, IsAPropertyWithANotifySignal) {
    const QMetaObject& meta = *GetParam().owner;
    const int index = meta.indexOfProperty(GetParam().name);
    ASSERT_GE(index, 0) << meta.className() << "::" << GetParam().name;
    const QMetaProperty property = meta.property(index);
    EXPECT_TRUE(property.hasNotifySignal()) << GetParam().name;
    EXPECT_TRUE(property.isReadable());
}

INSTANTIATE_TEST_SUITE_P(StreamManager, PublishedField, ::testing::ValuesIn(publishedFields),
                         [](const ::testing::TestParamInfo<Published>& info) { return std::string(info.param.name); });

// The core publishes the document, the two scenes and the program's switches,
// and nothing of its parts.
TEST(StreamManagerProperties, TheCorePublishesOnlyItsOwnFields) {
    const QMetaObject& meta = StreamManager::staticMetaObject;
    std::vector<std::string> own;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) own.emplace_back(meta.property(i).name());
    EXPECT_EQ(own, (std::vector<std::string>{"currentPreset", "activeScene", "sceneUpdateTimestamp",
                                             "progressBarUpdateTimestamp", "programScene", "liveSceneId",
                                             "isTransitioning",
                                             "isRecording", "isStreaming", "showPerformanceStats",
                                             "performanceMonitor", "isBlurModeActive", "streamQuality"}));
}

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
    EXPECT_GE(s->sceneUpdateTimestamp(), before.addSecs(-1));
    EXPECT_GE(s->progressBarUpdateTimestamp(), before.addSecs(-1));
    EXPECT_FALSE(s->showPerformanceStats());
    EXPECT_FALSE(s->isBlurModeActive());
    EXPECT_EQ(s->streamQuality(), StreamQuality::balanced);
    // The parts start as their own tests say.
    EXPECT_FALSE(s->programWindowController().isProgramWindowOpen());
    EXPECT_TRUE(s->pointer().showCursor());
    EXPECT_FALSE(s->drawing().isDrawingModeEnabled());
    EXPECT_FALSE(s->virtualCameraManager().isRunning());
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
    QSignalSpy stats(s.get(), &StreamManager::showPerformanceStatsChanged);
    s->setShowPerformanceStats(false);
    EXPECT_EQ(stats.count(), 0);
    s->setShowPerformanceStats(true);
    EXPECT_EQ(stats.count(), 1);
    EXPECT_EQ(stats.at(0).at(0).toBool(), true);
}

TEST(StreamManagerProperties, UpdateSignalFiresForItsFourFieldsOnly) {
    TestHome home;
    auto s = home.startSession();
    QSignalSpy update(s.get(), &StreamManager::streamManagerUpdate);

    s->setProgressBarUpdateTimestamp(QDateTime::currentDateTimeUtc());
    EXPECT_EQ(update.count(), 1);
    s->setProgramScene(makeScene("On air"));
    EXPECT_EQ(update.count(), 2);
    s->drawing().setIsDrawingModeEnabled(true);
    EXPECT_EQ(update.count(), 3);
    s->drawing().setShowDrawingButton(true);
    EXPECT_EQ(update.count(), 4);

    s->drawing().setShowDrawingToolbar(true);
    s->setActiveScene(makeScene("Preview"));
    s->setSceneUpdateTimestamp(QDateTime::currentDateTimeUtc());
    s->setIsBlurModeActive(true);
    s->pointer().setShowCursor(false);
    s->setIsRecording(true);
    EXPECT_EQ(update.count(), 4);
}

// The parts last as long as the session, which hands out the same ones on
// every call.
TEST(StreamManagerProperties, HandsOutTheSamePartsEveryTime) {
    TestHome home;
    auto s = home.startSession();
    EXPECT_EQ(&s->drawing(), &s->drawing());
    EXPECT_EQ(&s->pointer(), &s->pointer());
    EXPECT_EQ(&s->programWindowController(), &s->programWindowController());
    EXPECT_EQ(&s->virtualCameraManager(), &s->virtualCameraManager());
    QPointer<DrawingState> drawing(&s->drawing());
    QPointer<ProgramWindowController> window(&s->programWindowController());
    s.reset();
    EXPECT_TRUE(drawing.isNull());
    EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace orvane
