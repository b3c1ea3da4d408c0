#include "engine/StreamManager.h"

#include <QSettings>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <string>

#include "document/Log.h"
#include "document/PresetStorage.h"
#include "document/PresetTemplates.h"
#include "engine/PerformanceMonitor.h"
#include "engine/ProgramCopy.h"
#include "engine/WindowLayer.h"
#include "engine/WindowRaiser.h"

#include "engine/AssignIfChanged.h"

namespace orvane {

namespace {

QDateTime now() { return QDateTime::currentDateTimeUtc(); }

// The delay of a transition's end. The duration is not clamped by the
// session; only values a timer cannot take (negative, not a number, beyond
// some 24 days) are brought into range, so the flag always falls.
std::chrono::milliseconds transitionDelay(double durationSeconds) {
    if (!(durationSeconds > 0)) return std::chrono::milliseconds(0);
    const double ms = std::round(durationSeconds * 1000.0);
    if (ms >= static_cast<double>(INT_MAX)) return std::chrono::milliseconds(INT_MAX);
    return std::chrono::milliseconds(static_cast<long long>(ms));
}

// Queued calls by name (from the remote server's workers, say) copy their
// arguments through the meta-type system, which must know the records.
void registerRecordTypes() {
    qRegisterMetaType<StreamingScene>();
    qRegisterMetaType<Preset>();
    qRegisterMetaType<Point>();
    qRegisterMetaType<std::optional<StreamingScene>>();
    qRegisterMetaType<std::optional<Preset>>();
}

std::unique_ptr<QSettings> applicationSettings() {
    return std::make_unique<QSettings>(QStringLiteral("OrvaneUI"), QStringLiteral("OrvaneUI"));
}

}  // namespace

StreamManager::StreamManager(QObject* parent)
    : StreamManager(PresetStorage::shared(), applicationSettings(), parent) {}

StreamManager::StreamManager(PresetStorage& storage, std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent),
      storage_(storage),
      settings_(std::move(settings)),
      pointer_(std::make_unique<PointerState>()),
      drawing_(std::make_unique<DrawingState>()),
      virtualCameraManager_(std::make_unique<VirtualCameraManager>()),
      programWindowController_(std::make_unique<ProgramWindowController>(*pointer_, *virtualCameraManager_)) {
    // Start-up order: the initial values above, the parts, the performance
    // monitor, then the document. No timer or monitor starts here.
    static const bool registered = (registerRecordTypes(), true);
    Q_UNUSED(registered);
    connect(drawing_.get(), &DrawingState::isDrawingModeEnabledChanged, this, &StreamManager::streamManagerUpdate);
    connect(drawing_.get(), &DrawingState::showDrawingButtonChanged, this, &StreamManager::streamManagerUpdate);
    performanceMonitor_ = new PerformanceMonitor(this);
    loadOrCreatePreset();
}

StreamManager::~StreamManager() = default;

// ---------------------------------------------------------------- start-up

void StreamManager::loadOrCreatePreset() {
    const std::vector<Preset> presets = storage_.loadPresets();

    std::optional<Uuid> lastSelectedId;
    const QVariant stored = settings_->value(QString::fromLatin1(PresetStorage::lastSelectedPresetKey));
    if (stored.isValid()) lastSelectedId = Uuid::parse(stored.toString().toStdString());

    const Preset* chosen = nullptr;
    if (lastSelectedId) {
        const auto found = std::find_if(presets.begin(), presets.end(),
                                        [&](const Preset& p) { return p.id == *lastSelectedId; });
        if (found != presets.end()) {
            chosen = &*found;
            setCurrentPreset(*chosen);
            logLine("✅ Loaded last selected preset: " + chosen->name);
        }
    }
    if (!chosen) {
        if (presets.empty()) {
            setCurrentPreset(std::nullopt);
            setActiveScene(std::nullopt);
            setProgramScene(std::nullopt);
            logLine("ℹ️ No presets found - starting with empty state");
            return;
        }
        chosen = &presets.front();
        setCurrentPreset(*chosen);
        logLine("✅ Loaded first available preset: " + chosen->name);
    }

    Preset preset = *chosen;
    if (preset.scenes.empty()) {
        const StreamingScene scene = makeScene("Scene 1");
        preset.scenes.push_back(scene);
        preset.activeSceneId = scene.id;
        setCurrentPreset(preset);
        storage_.savePreset(preset);
        logLine("✅ Created default empty scene for preset: " + preset.name);
    }

    const StreamingScene* restored = nullptr;
    if (preset.activeSceneId) {
        const auto found = std::find_if(preset.scenes.begin(), preset.scenes.end(),
                                        [&](const StreamingScene& s) { return s.id == *preset.activeSceneId; });
        if (found != preset.scenes.end()) restored = &*found;
    }
    if (restored) {
        setActiveScene(*restored);
        setProgramScene(*restored);
        logLine("✅ Restored active scene: " + restored->name);
    } else if (!preset.scenes.empty()) {
        setActiveScene(preset.scenes.front());
        setProgramScene(preset.scenes.front());
        logLine("✅ Using first scene: " + preset.scenes.front().name);
    }
}

// ---------------------------------------------------------------- document operations

void StreamManager::switchToScene(const StreamingScene& scene) {
    if (currentPreset_) {
        const auto& scenes = currentPreset_->scenes;
        const auto found = std::find_if(scenes.begin(), scenes.end(),
                                        [&](const StreamingScene& s) { return s.id == scene.id; });
        if (found != scenes.end()) {
            setActiveScene(*found);
            Preset copy = *currentPreset_;
            copy.activeSceneId = scene.id;
            setCurrentPreset(copy);
            rememberLastSelectedPreset(copy.id);
            return;
        }
    }
    // A scene that is not (or no longer) in the document: preview only.
    setActiveScene(scene);
}

bool StreamManager::switchToSceneAt(qsizetype index) {
    if (!currentPreset_ || index < 0 || index >= static_cast<qsizetype>(currentPreset_->scenes.size()))
        return false;
    const StreamingScene scene = currentPreset_->scenes[static_cast<std::size_t>(index)];
    switchToScene(scene);
    return true;
}

void StreamManager::addScene(const StreamingScene& scene) {
    if (!currentPreset_) return;
    Preset copy = *currentPreset_;
    copy.scenes.push_back(scene);
    setCurrentPreset(copy);
}

void StreamManager::updateScene(const StreamingScene& scene) {
    if (!currentPreset_) return;
    Preset copy = *currentPreset_;
    const auto found = std::find_if(copy.scenes.begin(), copy.scenes.end(),
                                    [&](const StreamingScene& s) { return s.id == scene.id; });
    if (found == copy.scenes.end()) return;
    *found = scene;
    setCurrentPreset(copy);
    if (activeScene_ && activeScene_->id == scene.id) setActiveScene(scene);
    // Matches only until the first go-live, which gives the program a fresh id.
    if (programScene_ && programScene_->id == scene.id) setProgramScene(scene);
    // A second write of the same document; kept, cheap for presets this size.
    storage_.savePreset(copy);
    setSceneUpdateTimestamp(now());
    logLine("🔄 Scene updated: " + scene.name + ", sources: " + std::to_string(scene.sources.size()));
}

void StreamManager::deleteScene(const StreamingScene& scene) {
    if (!currentPreset_) return;
    Preset copy = *currentPreset_;
    std::erase_if(copy.scenes, [&](const StreamingScene& s) { return s.id == scene.id; });
    // Deleting the last scene leaves the active scene as it was; the program
    // is never touched, so a deleted scene may stay on air.
    if (activeScene_ && activeScene_->id == scene.id && !copy.scenes.empty()) {
        setActiveScene(copy.scenes.front());
        copy.activeSceneId = copy.scenes.front().id;
    }
    setCurrentPreset(copy);
}

void StreamManager::toggleBlurMode() {
    setIsBlurModeActive(!isBlurModeActive_);
    setSceneUpdateTimestamp(now());
    logLine(std::string("🔒 Blur mode ") + (isBlurModeActive_ ? "activated" : "deactivated"));
}

void StreamManager::rememberLastSelectedPreset(const Uuid& presetId) {
    settings_->setValue(QString::fromLatin1(PresetStorage::lastSelectedPresetKey),
                        QString::fromStdString(presetId.toString()));
    settings_->sync();
}

// ---------------------------------------------------------------- program bus

void StreamManager::updateLive() {
    const SceneTransitionConfig transition =
        currentPreset_ ? currentPreset_->sceneTransition : SceneTransitionConfig{true, TransitionType::fade, 1.1};
    const bool plays = transition.enabled && transition.type != TransitionType::none;
    if (plays) setIsTransitioning(true);

    if (activeScene_) {
        const StreamingScene scene = *activeScene_;
        assignProgramScene(makeProgramCopy(scene), scene.id);
        logLine("📺 Updated live program with scene: " + scene.name + ", sources: " +
                std::to_string(scene.sources.size()));
        bringSceneWindowToFront(scene);
    }

    // One reset per go-live and none is cancelled: the first to fire ends the
    // flag even while a later transition still plays.
    if (plays) QTimer::singleShot(transitionDelay(transition.duration), this, [this] { setIsTransitioning(false); });
}

void StreamManager::bringSceneWindowToFront(const StreamingScene& scene) {
    const auto source = std::find_if(scene.sources.begin(), scene.sources.end(),
                                     [](const Source& s) { return s.type == SourceType::window; });
    if (source == scene.sources.end() || !source->configuration.windowId) return;
    const std::uint32_t windowId = *source->configuration.windowId;
    QMetaObject::invokeMethod(
        this, [raiser = windowRaiser_, windowId] {
            if (raiser) raiser->bringWindowToFront(windowId);
        },
        Qt::QueuedConnection);
}

void StreamManager::bringMainWindowToFront() {
    QMetaObject::invokeMethod(
        this, [this] {
            if (windowLayer_) windowLayer_->bringApplicationToFront();
            logLine("🪟 Main app window brought to front");
        },
        Qt::QueuedConnection);
}

// ---------------------------------------------------------------- collaborators

void StreamManager::setWindowLayer(std::shared_ptr<WindowLayer> layer) {
    programWindowController_->setWindowLayer(layer);
    windowLayer_ = std::move(layer);
}

void StreamManager::setWindowRaiser(std::shared_ptr<WindowRaiser> raiser) { windowRaiser_ = std::move(raiser); }

// ---------------------------------------------------------------- published state

void StreamManager::setCurrentPreset(const std::optional<Preset>& preset) {
    currentPreset_ = preset;
    if (currentPreset_) storage_.savePreset(*currentPreset_);
    emit currentPresetChanged();
}

void StreamManager::setActiveScene(const std::optional<StreamingScene>& scene) {
    activeScene_ = scene;
    emit activeSceneChanged();
}

void StreamManager::setSceneUpdateTimestamp(const QDateTime& timestamp) {
    sceneUpdateTimestamp_ = timestamp;
    emit sceneUpdateTimestampChanged();
}

void StreamManager::setProgressBarUpdateTimestamp(const QDateTime& timestamp) {
    progressBarUpdateTimestamp_ = timestamp;
    emit progressBarUpdateTimestampChanged();
    emit streamManagerUpdate();
}

void StreamManager::setProgramScene(const std::optional<StreamingScene>& scene) {
    std::optional<Uuid> origin;
    if (scene && currentPreset_)
        for (const StreamingScene& s : currentPreset_->scenes)
            if (s.id == scene->id) origin = s.id;
    assignProgramScene(scene, origin);
}

void StreamManager::assignProgramScene(const std::optional<StreamingScene>& scene, const std::optional<Uuid>& origin) {
    programScene_ = scene;
    setLiveSceneId(origin);
    emit programSceneChanged();
    emit streamManagerUpdate();
}

void StreamManager::setLiveSceneId(const std::optional<Uuid>& id) {
    if (liveSceneId_ == id) return;
    liveSceneId_ = id;
    emit liveSceneIdChanged();
}

void StreamManager::setIsTransitioning(bool transitioning) {
    if (assignIfChanged(isTransitioning_, transitioning)) emit isTransitioningChanged(transitioning);
}

void StreamManager::setIsRecording(bool recording) {
    if (assignIfChanged(isRecording_, recording)) emit isRecordingChanged(recording);
}

void StreamManager::setIsStreaming(bool streaming) {
    if (assignIfChanged(isStreaming_, streaming)) emit isStreamingChanged(streaming);
}

void StreamManager::setShowPerformanceStats(bool show) {
    if (assignIfChanged(showPerformanceStats_, show)) emit showPerformanceStatsChanged(show);
}

void StreamManager::setIsBlurModeActive(bool active) {
    if (assignIfChanged(isBlurModeActive_, active)) emit isBlurModeActiveChanged(active);
}

void StreamManager::setStreamQuality(StreamQuality quality) {
    if (assignIfChanged(streamQuality_, quality)) emit streamQualityChanged();
}

}  // namespace orvane
