#pragma once

#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "capture/CameraDevice.h"
#include "capture/CaptureDisplay.h"
#include "capture/CaptureWindow.h"
#include "console/scene_tab/SceneEdit.h"

class QLabel;
class QLineEdit;

namespace orvane {

class CameraBackend;
class CameraConfigurationView;
class CameraSelectorView;
class CaptureBackend;
class QuickAddButton;
class SceneBackgroundSection;
class SceneBrandingSection;
class SceneLayoutSection;
class SceneProgressBarSection;
class SlidesSourceSection;
class SceneSourcesList;
class ScreenSelectorView;
class ScreenWindowEffectsView;
class StreamManager;
class WindowSelectorView;

// The sidebar's scene tab: name, background, layout, the sources and how to
// add them. Every change copies the selected scene, changes the copy, takes
// the copy as the selected scene and hands it to the session, which saves.
// With no scene selected nothing is written.
class SceneTabView : public QWidget {
    Q_OBJECT

public:
    explicit SceneTabView(StreamManager& streamManager, QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);
    const std::optional<StreamingScene>& scene() const { return scene_; }
    // Where the selector sheets list displays, windows and cameras; either
    // may be null, and the sheet then says so.
    void setCaptureBackends(CaptureBackend* capture, CameraBackend* cameras);

    // The write rule, for every control of the tab.
    void apply(const SceneEdit& edit);

    // Trimmed; a name that is empty after trimming leaves the scene's name.
    void updateSceneName(const QString& text);
    void addScreenSource(const CaptureDisplay& display);
    void addWindowSource(const CaptureWindow& window);
    void addCameraSource(const CameraDevice& camera);
    void addSlidesSource();
    void deleteSource(const Uuid& id);
    void selectSource(const Uuid& id);
    // Replaces the scene's source of the same id; one that is gone is skipped.
    void updateSourceConfiguration(const Source& source);

    ScreenSelectorView* showScreenSelector();
    WindowSelectorView* showWindowSelector();
    CameraSelectorView* showCameraSelector();

    QLineEdit* nameField() const { return nameField_; }
    SceneBackgroundSection* backgroundSection() const { return background_; }
    SceneLayoutSection* layoutSection() const { return layout_; }
    SceneSourcesList* sourcesList() const { return sources_; }
    SlidesSourceSection* slidesSection() const { return slides_; }
    CameraConfigurationView* cameraSettings() const { return cameraSettings_; }
    ScreenWindowEffectsView* visualEffects() const { return visualEffects_; }
    CaptureBackend* captureBackend() const { return capture_; }
    QuickAddButton* addScreenButton() const { return addScreen_; }
    QuickAddButton* addWindowButton() const { return addWindow_; }
    QuickAddButton* addCameraButton() const { return addCamera_; }
    QuickAddButton* addSlidesButton() const { return addSlides_; }
    SceneBrandingSection* brandingSection() const { return branding_; }
    SceneProgressBarSection* progressBarSection() const { return progressBar_; }

signals:
    // After each write, with the scene as written.
    void sceneWritten(const orvane::StreamingScene& scene);
    // The button beside "SOURCES": the source manager should open.
    void manageSourcesRequested();

private:
    bool canAddSources() const;
    void refresh(bool sceneChanged);

    StreamManager& streamManager_;
    std::optional<StreamingScene> scene_;
    CaptureBackend* capture_ = nullptr;
    CameraBackend* cameras_ = nullptr;
    std::optional<std::uint32_t> selectedDisplay_;
    std::optional<std::uint32_t> selectedWindow_;
    std::optional<QString> selectedCamera_;

    QLabel* noSceneName_ = nullptr;
    QLineEdit* nameField_ = nullptr;
    SceneBackgroundSection* background_ = nullptr;
    SceneLayoutSection* layout_ = nullptr;
    SceneSourcesList* sources_ = nullptr;
    SlidesSourceSection* slides_ = nullptr;
    CameraConfigurationView* cameraSettings_ = nullptr;
    ScreenWindowEffectsView* visualEffects_ = nullptr;
    QWidget* addBlock_ = nullptr;
    QWidget* addNone_ = nullptr;
    QuickAddButton* addScreen_ = nullptr;
    QuickAddButton* addWindow_ = nullptr;
    QuickAddButton* addCamera_ = nullptr;
    QuickAddButton* addSlides_ = nullptr;
    SceneBrandingSection* branding_ = nullptr;
    SceneProgressBarSection* progressBar_ = nullptr;
};

}  // namespace orvane
