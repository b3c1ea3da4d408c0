#pragma once

#include <QDateTime>
#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

#include "document/CodableColor.h"
#include "document/DrawingColor.h"
#include "document/DrawingShape.h"
#include "document/DrawingTool.h"
#include "document/FreehandPath.h"
#include "document/Geometry.h"
#include "document/Preset.h"
#include "document/StreamingScene.h"
#include "engine/DrawingButtonPosition.h"
#include "engine/ProgramWindow.h"
#include "engine/StreamQuality.h"

class QSettings;

namespace orvane {

class PerformanceMonitor;
class PresetStorage;
class VirtualCameraManager;
class WindowLayer;
class WindowRaiser;

// The one session object: the open document, the scene in preview, the scene
// on air and every switch of the console. Lives on the main thread; other
// threads hop to it with queued calls.
//
// Documents change in two ways only: the scene rule (copy a scene, change it,
// hand it to updateScene) and the preset rule (copy the preset, change it,
// assign it to currentPreset). Every assignment of a present preset is
// written to disk at once.
//
// Scene records compare by id, so observers redraw on sceneUpdateTimestamp
// and progressBarUpdateTimestamp. Record-valued properties notify on every
// assignment; plain values only when they change.
class StreamManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(std::optional<orvane::Preset> currentPreset READ currentPreset WRITE setCurrentPreset NOTIFY currentPresetChanged)
    Q_PROPERTY(std::optional<orvane::StreamingScene> activeScene READ activeScene WRITE setActiveScene NOTIFY activeSceneChanged)
    Q_PROPERTY(QDateTime sceneUpdateTimestamp READ sceneUpdateTimestamp WRITE setSceneUpdateTimestamp NOTIFY sceneUpdateTimestampChanged)
    Q_PROPERTY(QDateTime progressBarUpdateTimestamp READ progressBarUpdateTimestamp WRITE setProgressBarUpdateTimestamp NOTIFY progressBarUpdateTimestampChanged)
    Q_PROPERTY(std::optional<orvane::StreamingScene> programScene READ programScene WRITE setProgramScene NOTIFY programSceneChanged)
    Q_PROPERTY(bool isTransitioning READ isTransitioning NOTIFY isTransitioningChanged)
    Q_PROPERTY(bool isRecording READ isRecording WRITE setIsRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(bool isStreaming READ isStreaming WRITE setIsStreaming NOTIFY isStreamingChanged)
    Q_PROPERTY(bool isProgramWindowOpen READ isProgramWindowOpen NOTIFY isProgramWindowOpenChanged)
    Q_PROPERTY(bool showCursor READ showCursor WRITE setShowCursor NOTIFY showCursorChanged)
    Q_PROPERTY(bool cursorHighlight READ cursorHighlight WRITE setCursorHighlight NOTIFY cursorHighlightChanged)
    Q_PROPERTY(bool showClicks READ showClicks WRITE setShowClicks NOTIFY showClicksChanged)
    Q_PROPERTY(orvane::CodableColor cursorHighlightColor READ cursorHighlightColor WRITE setCursorHighlightColor NOTIFY cursorHighlightColorChanged)
    Q_PROPERTY(orvane::Point globalMouseLocation READ globalMouseLocation WRITE setGlobalMouseLocation NOTIFY globalMouseLocationChanged)
    Q_PROPERTY(bool isMouseOverMainWindow READ isMouseOverMainWindow WRITE setIsMouseOverMainWindow NOTIFY isMouseOverMainWindowChanged)
    Q_PROPERTY(orvane::Point lastClickPosition READ lastClickPosition WRITE setLastClickPosition NOTIFY lastClickPositionChanged)
    Q_PROPERTY(QDateTime clickTimestamp READ clickTimestamp WRITE setClickTimestamp NOTIFY clickTimestampChanged)
    Q_PROPERTY(orvane::Size mainWindowSize READ mainWindowSize WRITE setMainWindowSize NOTIFY mainWindowSizeChanged)
    Q_PROPERTY(bool showPerformanceStats READ showPerformanceStats WRITE setShowPerformanceStats NOTIFY showPerformanceStatsChanged)
    Q_PROPERTY(orvane::PerformanceMonitor* performanceMonitor READ performanceMonitor CONSTANT)
    Q_PROPERTY(bool programWindowAlwaysOnTop READ programWindowAlwaysOnTop WRITE setProgramWindowAlwaysOnTop NOTIFY programWindowAlwaysOnTopChanged)
    Q_PROPERTY(bool isDrawingModeEnabled READ isDrawingModeEnabled WRITE setIsDrawingModeEnabled NOTIFY isDrawingModeEnabledChanged)
    Q_PROPERTY(orvane::DrawingTool selectedDrawingTool READ selectedDrawingTool WRITE setSelectedDrawingTool NOTIFY selectedDrawingToolChanged)
    Q_PROPERTY(orvane::DrawingColor selectedDrawingColor READ selectedDrawingColor WRITE setSelectedDrawingColor NOTIFY selectedDrawingColorChanged)
    Q_PROPERTY(double drawingStrokeWidth READ drawingStrokeWidth WRITE setDrawingStrokeWidth NOTIFY drawingStrokeWidthChanged)
    Q_PROPERTY(std::vector<orvane::DrawingShape> drawingShapes READ drawingShapes WRITE setDrawingShapes NOTIFY drawingShapesChanged)
    Q_PROPERTY(std::vector<orvane::FreehandPath> freehandPaths READ freehandPaths WRITE setFreehandPaths NOTIFY freehandPathsChanged)
    Q_PROPERTY(bool showDrawingToolbar READ showDrawingToolbar WRITE setShowDrawingToolbar NOTIFY showDrawingToolbarChanged)
    Q_PROPERTY(orvane::DrawingButtonPosition drawingButtonPosition READ drawingButtonPosition WRITE setDrawingButtonPosition NOTIFY drawingButtonPositionChanged)
    Q_PROPERTY(bool showDrawingButton READ showDrawingButton WRITE setShowDrawingButton NOTIFY showDrawingButtonChanged)
    Q_PROPERTY(bool isBlurModeActive READ isBlurModeActive WRITE setIsBlurModeActive NOTIFY isBlurModeActiveChanged)
    Q_PROPERTY(orvane::StreamQuality streamQuality READ streamQuality WRITE setStreamQuality NOTIFY streamQualityChanged)
    Q_PROPERTY(QObject* webServerManager READ webServerManager NOTIFY webServerManagerChanged)

public:
    static constexpr const char* programWindowTitle = "OrvaneUI - Virtual Camera Output";
    static constexpr const char* programWindowFrameName = "VirtualCameraWindow";

    // The application's session: the shared preset store and the
    // application's settings.
    explicit StreamManager(QObject* parent = nullptr);
    // A session on any store and settings file, for tests and tools.
    StreamManager(PresetStorage& storage, std::unique_ptr<QSettings> settings, QObject* parent = nullptr);
    ~StreamManager() override;

    // --- the document and its two scene copies
    const std::optional<Preset>& currentPreset() const { return currentPreset_; }
    void setCurrentPreset(const std::optional<Preset>& preset);  // saves a present value
    const std::optional<StreamingScene>& activeScene() const { return activeScene_; }
    void setActiveScene(const std::optional<StreamingScene>& scene);
    const QDateTime& sceneUpdateTimestamp() const { return sceneUpdateTimestamp_; }
    void setSceneUpdateTimestamp(const QDateTime& timestamp);
    const QDateTime& progressBarUpdateTimestamp() const { return progressBarUpdateTimestamp_; }
    void setProgressBarUpdateTimestamp(const QDateTime& timestamp);
    const std::optional<StreamingScene>& programScene() const { return programScene_; }
    void setProgramScene(const std::optional<StreamingScene>& scene);

    // --- run-time flags
    bool isTransitioning() const { return isTransitioning_; }
    // Mirrors the recording manager once it exists; until then only the
    // remote's recording switch sets it.
    bool isRecording() const { return isRecording_; }
    void setIsRecording(bool recording);
    bool isStreaming() const { return isStreaming_; }  // reported, set by nothing
    void setIsStreaming(bool streaming);
    bool isProgramWindowOpen() const { return isProgramWindowOpen_; }
    bool showCursor() const { return showCursor_; }
    void setShowCursor(bool show);
    bool showPerformanceStats() const { return showPerformanceStats_; }
    void setShowPerformanceStats(bool show);
    bool programWindowAlwaysOnTop() const { return programWindowAlwaysOnTop_; }
    void setProgramWindowAlwaysOnTop(bool onTop);  // applied by updateProgramWindowLevel
    bool isBlurModeActive() const { return isBlurModeActive_; }
    void setIsBlurModeActive(bool active);
    StreamQuality streamQuality() const { return streamQuality_; }
    void setStreamQuality(StreamQuality quality);

    // --- the pointer fields: stored for the pointer overlay, read by nothing
    bool cursorHighlight() const { return cursorHighlight_; }
    void setCursorHighlight(bool highlight);
    bool showClicks() const { return showClicks_; }
    void setShowClicks(bool show);
    const CodableColor& cursorHighlightColor() const { return cursorHighlightColor_; }
    void setCursorHighlightColor(const CodableColor& color);
    const Point& globalMouseLocation() const { return globalMouseLocation_; }
    void setGlobalMouseLocation(const Point& location);
    bool isMouseOverMainWindow() const { return isMouseOverMainWindow_; }
    void setIsMouseOverMainWindow(bool over);
    const Point& lastClickPosition() const { return lastClickPosition_; }
    void setLastClickPosition(const Point& position);
    const QDateTime& clickTimestamp() const { return clickTimestamp_; }
    void setClickTimestamp(const QDateTime& timestamp);
    const Size& mainWindowSize() const { return mainWindowSize_; }
    void setMainWindowSize(const Size& size);

    // --- the drawing, in memory only
    bool isDrawingModeEnabled() const { return isDrawingModeEnabled_; }
    void setIsDrawingModeEnabled(bool enabled);
    DrawingTool selectedDrawingTool() const { return selectedDrawingTool_; }
    void setSelectedDrawingTool(DrawingTool tool);
    const DrawingColor& selectedDrawingColor() const { return selectedDrawingColor_; }
    void setSelectedDrawingColor(const DrawingColor& color);
    double drawingStrokeWidth() const { return drawingStrokeWidth_; }
    void setDrawingStrokeWidth(double width);
    const std::vector<DrawingShape>& drawingShapes() const { return drawingShapes_; }
    void setDrawingShapes(const std::vector<DrawingShape>& shapes);
    const std::vector<FreehandPath>& freehandPaths() const { return freehandPaths_; }
    void setFreehandPaths(const std::vector<FreehandPath>& paths);
    bool showDrawingToolbar() const { return showDrawingToolbar_; }
    void setShowDrawingToolbar(bool show);
    DrawingButtonPosition drawingButtonPosition() const { return drawingButtonPosition_; }
    void setDrawingButtonPosition(DrawingButtonPosition position);
    bool showDrawingButton() const { return showDrawingButton_; }
    void setShowDrawingButton(bool show);

    // --- owned managers. The ones of subsystems above the engine are handed
    // in once they exist; the session takes them over as their QObject parent.
    PerformanceMonitor* performanceMonitor() const { return performanceMonitor_; }
    VirtualCameraManager* virtualCameraManager() const { return virtualCameraManager_; }
    QObject* webServerManager() const { return webServerManager_; }
    void setWebServerManager(QObject* manager);
    QObject* teleprompterManager() const { return teleprompterManager_; }
    void setTeleprompterManager(QObject* manager);
    QObject* recordingManager() const { return recordingManager_; }
    void setRecordingManager(QObject* manager);

    // --- what the session drives but does not implement
    void setWindowLayer(std::shared_ptr<WindowLayer> layer);
    void setWindowRaiser(std::shared_ptr<WindowRaiser> raiser);

    PresetStorage& presetStorage() const { return storage_; }
    QSettings& settings() const { return *settings_; }

public slots:
    // --- document operations
    void switchToScene(const orvane::StreamingScene& scene);
    // The scene at this place of the preset; false when there is none.
    bool switchToSceneAt(qsizetype index);
    void addScene(const orvane::StreamingScene& scene);
    void updateScene(const orvane::StreamingScene& scene);
    void deleteScene(const orvane::StreamingScene& scene);
    void toggleBlurMode();
    void toggleDrawingMode();
    void removeFreehandPathsIntersecting(const orvane::Point& point, double radius);

    // --- the program bus
    void updateLive();
    void bringSceneWindowToFront(const orvane::StreamingScene& scene);
    void bringMainWindowToFront();
    void openProgramWindow();
    void closeProgramWindow();
    void updateProgramWindowLevel();
    // The pop-out window's user-close callback; any other window is ignored.
    void windowWillClose(orvane::ProgramWindow* window);

signals:
    // The outward "StreamManagerUpdate" notification: after every change of
    // progressBarUpdateTimestamp, programScene, isDrawingModeEnabled and
    // showDrawingButton. Nothing inside the application needs it.
    void streamManagerUpdate();

    void currentPresetChanged();
    void activeSceneChanged();
    void sceneUpdateTimestampChanged();
    void progressBarUpdateTimestampChanged();
    void programSceneChanged();
    void isTransitioningChanged(bool transitioning);
    void isRecordingChanged(bool recording);
    void isStreamingChanged(bool streaming);
    void isProgramWindowOpenChanged(bool open);
    void showCursorChanged(bool show);
    void cursorHighlightChanged(bool highlight);
    void showClicksChanged(bool show);
    void cursorHighlightColorChanged();
    void globalMouseLocationChanged();
    void isMouseOverMainWindowChanged(bool over);
    void lastClickPositionChanged();
    void clickTimestampChanged();
    void mainWindowSizeChanged();
    void showPerformanceStatsChanged(bool show);
    void programWindowAlwaysOnTopChanged(bool onTop);
    void isDrawingModeEnabledChanged(bool enabled);
    void selectedDrawingToolChanged();
    void selectedDrawingColorChanged();
    void drawingStrokeWidthChanged(double width);
    void drawingShapesChanged();
    void freehandPathsChanged();
    void showDrawingToolbarChanged(bool show);
    void drawingButtonPositionChanged();
    void showDrawingButtonChanged(bool show);
    void isBlurModeActiveChanged(bool active);
    void streamQualityChanged();
    void webServerManagerChanged();

private:
    void loadOrCreatePreset();
    void setIsTransitioning(bool transitioning);
    void setIsProgramWindowOpen(bool open);
    void rememberLastSelectedPreset(const Uuid& presetId);

    PresetStorage& storage_;
    std::unique_ptr<QSettings> settings_;
    std::shared_ptr<WindowLayer> windowLayer_;
    std::shared_ptr<WindowRaiser> windowRaiser_;

    // Published state, in the order the console knows it.
    std::optional<Preset> currentPreset_;
    std::optional<StreamingScene> activeScene_;
    QDateTime sceneUpdateTimestamp_ = QDateTime::currentDateTimeUtc();
    QDateTime progressBarUpdateTimestamp_ = QDateTime::currentDateTimeUtc();
    std::optional<StreamingScene> programScene_;
    bool isTransitioning_ = false;
    bool isRecording_ = false;
    bool isStreaming_ = false;
    bool isProgramWindowOpen_ = false;
    bool showCursor_ = true;
    bool cursorHighlight_ = false;
    bool showClicks_ = false;
    CodableColor cursorHighlightColor_{1, 1, 0, 1};
    Point globalMouseLocation_;
    bool isMouseOverMainWindow_ = false;
    Point lastClickPosition_;
    QDateTime clickTimestamp_ = QDateTime::currentDateTimeUtc();
    Size mainWindowSize_;
    bool showPerformanceStats_ = false;
    PerformanceMonitor* performanceMonitor_ = nullptr;  // child
    bool programWindowAlwaysOnTop_ = false;
    bool isDrawingModeEnabled_ = false;
    DrawingTool selectedDrawingTool_ = DrawingTool::line;
    DrawingColor selectedDrawingColor_{1, 0, 0, 1};
    double drawingStrokeWidth_ = 3.0;
    std::vector<DrawingShape> drawingShapes_;
    std::vector<FreehandPath> freehandPaths_;
    bool showDrawingToolbar_ = false;
    DrawingButtonPosition drawingButtonPosition_ = DrawingButtonPosition::bottomRight;
    bool showDrawingButton_ = false;
    bool isBlurModeActive_ = false;
    StreamQuality streamQuality_ = StreamQuality::balanced;

    // Owned managers (children); weak pointers so that a manager deleted by
    // its own subsystem is seen as gone.
    QPointer<QObject> webServerManager_;
    QPointer<QObject> teleprompterManager_;
    QPointer<QObject> recordingManager_;
    VirtualCameraManager* virtualCameraManager_ = nullptr;  // child

    // The pop-out window; kept alive by a queued release when the user
    // closes it, so that its own close handler may finish.
    std::shared_ptr<ProgramWindow> programWindow_;
};

}  // namespace orvane
