#pragma once

#include <QDateTime>
#include <QObject>

#include <memory>
#include <optional>

#include "document/Preset.h"
#include "document/StreamingScene.h"
#include "engine/DrawingState.h"
#include "engine/PointerState.h"
#include "engine/ProgramWindowController.h"
#include "engine/StreamQuality.h"
#include "engine/VirtualCameraManager.h"

class QSettings;

namespace orvane {

class PerformanceMonitor;
class PresetStorage;
class WindowLayer;
class WindowRaiser;

// The session core: the open document, the scene in preview, the scene on
// air and the switches that belong to the program. Lives on the main thread;
// other threads hop to it with queued calls.
//
// Documents change in two ways only: the scene rule (copy a scene, change it,
// hand it to updateScene) and the preset rule (copy the preset, change it,
// assign it to currentPreset). Every assignment of a present preset is
// written to disk at once.
//
// Beside the core, and handed out by reference, live its parts: the drawing
// over the program (drawing()), the pointer (pointer()) and the pop-out
// program window with its virtual camera (programWindowController()). They
// live exactly as long as the session.
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
    Q_PROPERTY(std::optional<orvane::Uuid> liveSceneId READ liveSceneId NOTIFY liveSceneIdChanged)
    Q_PROPERTY(bool isTransitioning READ isTransitioning NOTIFY isTransitioningChanged)
    Q_PROPERTY(bool isRecording READ isRecording WRITE setIsRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(bool isStreaming READ isStreaming WRITE setIsStreaming NOTIFY isStreamingChanged)
    Q_PROPERTY(bool showPerformanceStats READ showPerformanceStats WRITE setShowPerformanceStats NOTIFY showPerformanceStatsChanged)
    Q_PROPERTY(orvane::PerformanceMonitor* performanceMonitor READ performanceMonitor CONSTANT)
    Q_PROPERTY(bool isBlurModeActive READ isBlurModeActive WRITE setIsBlurModeActive NOTIFY isBlurModeActiveChanged)
    Q_PROPERTY(orvane::StreamQuality streamQuality READ streamQuality WRITE setStreamQuality NOTIFY streamQualityChanged)

public:
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
    // The scene of the preset that the program shows, for the scene list's
    // mark: the scene that went live last, or the one restored at start.
    // None once the program shows something that is no scene of the preset.
    const std::optional<Uuid>& liveSceneId() const { return liveSceneId_; }

    // --- run-time flags
    bool isTransitioning() const { return isTransitioning_; }
    // Follows the recorder; the composition root keeps the two in step.
    bool isRecording() const { return isRecording_; }
    void setIsRecording(bool recording);
    // Reported by the remote interface.
    bool isStreaming() const { return isStreaming_; }
    void setIsStreaming(bool streaming);
    bool showPerformanceStats() const { return showPerformanceStats_; }
    void setShowPerformanceStats(bool show);
    bool isBlurModeActive() const { return isBlurModeActive_; }
    void setIsBlurModeActive(bool active);
    StreamQuality streamQuality() const { return streamQuality_; }
    void setStreamQuality(StreamQuality quality);

    // --- the session's parts
    PerformanceMonitor* performanceMonitor() const { return performanceMonitor_; }
    DrawingState& drawing() const { return *drawing_; }
    PointerState& pointer() const { return *pointer_; }
    ProgramWindowController& programWindowController() const { return *programWindowController_; }
    VirtualCameraManager& virtualCameraManager() const { return *virtualCameraManager_; }

    // --- what the session drives but does not implement. The window layer
    // serves the pop-out window too.
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

    // --- the program bus
    void updateLive();
    void bringSceneWindowToFront(const orvane::StreamingScene& scene);
    void bringMainWindowToFront();

signals:
    // The outward "StreamManagerUpdate" notification: after every change of
    // progressBarUpdateTimestamp, programScene, and of the drawing's
    // isDrawingModeEnabled and showDrawingButton.
    void streamManagerUpdate();

    void currentPresetChanged();
    void activeSceneChanged();
    void sceneUpdateTimestampChanged();
    void progressBarUpdateTimestampChanged();
    void programSceneChanged();
    void liveSceneIdChanged();
    void isTransitioningChanged(bool transitioning);
    void isRecordingChanged(bool recording);
    void isStreamingChanged(bool streaming);
    void showPerformanceStatsChanged(bool show);
    void isBlurModeActiveChanged(bool active);
    void streamQualityChanged();

private:
    void loadOrCreatePreset();
    void setIsTransitioning(bool transitioning);
    void setLiveSceneId(const std::optional<Uuid>& id);
    // The program scene and the preset scene it shows, together.
    void assignProgramScene(const std::optional<StreamingScene>& scene, const std::optional<Uuid>& origin);
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
    std::optional<Uuid> liveSceneId_;
    bool isTransitioning_ = false;
    bool isRecording_ = false;
    bool isStreaming_ = false;
    bool showPerformanceStats_ = false;
    PerformanceMonitor* performanceMonitor_ = nullptr;  // child
    bool isBlurModeActive_ = false;
    StreamQuality streamQuality_ = StreamQuality::balanced;

    // The parts, destroyed in reverse order while the store and the settings
    // are still whole: the program window goes first.
    std::unique_ptr<PointerState> pointer_;
    std::unique_ptr<DrawingState> drawing_;
    std::unique_ptr<VirtualCameraManager> virtualCameraManager_;
    std::unique_ptr<ProgramWindowController> programWindowController_;
};

}  // namespace orvane
