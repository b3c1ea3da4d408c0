#pragma once

#include <QWidget>
#include <optional>

#include "document/Preset.h"

class QStackedLayout;

namespace orvane {

class FrameSource;
class KeyboardNavigationManager;
class MainStreamingView;
class OnboardingView;
class PermissionsManager;
class PresetSelectionView;
class StreamManager;
class WindowManager;

// The root of the main window: the preset screen first, then the console,
// and the welcome assistant over either when it is due. The session outlives
// every move between the screens.
class ContentView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool showPresetSelection READ showPresetSelection WRITE setShowPresetSelection NOTIFY
                   showPresetSelectionChanged)
    Q_PROPERTY(bool showOnboarding READ showOnboarding WRITE setShowOnboarding NOTIFY showOnboardingChanged)

public:
    static constexpr int onboardingDelayMs = 500;

    ContentView(StreamManager& streamManager, WindowManager& windowManager, const FrameSource* frames = nullptr,
                QWidget* parent = nullptr);
    ~ContentView() override;

    bool showPresetSelection() const { return showPresetSelection_; }
    void setShowPresetSelection(bool show);
    bool showOnboarding() const { return showOnboarding_; }
    void setShowOnboarding(bool show);

    const std::optional<Preset>& selectedPreset() const { return selectedPreset_; }
    void setSelectedPreset(const Preset& preset);

    PresetSelectionView* presetSelectionView() const { return presetSelection_; }
    MainStreamingView* mainStreamingView() const { return console_; }
    OnboardingView* onboardingView() const { return onboarding_; }
    PermissionsManager& permissionsManager() const { return *permissionsManager_; }
    KeyboardNavigationManager& keyboardNavManager() const { return *keyboardNavManager_; }

    // Opens the permissions panel over the current screen.
    void showPermissionsManagement();

signals:
    void showPresetSelectionChanged(bool show);
    void showOnboardingChanged(bool show);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    StreamManager& streamManager_;
    WindowManager& windowManager_;
    KeyboardNavigationManager* keyboardNavManager_ = nullptr;
    PermissionsManager* permissionsManager_ = nullptr;
    QWidget* screens_ = nullptr;
    QStackedLayout* stack_ = nullptr;
    PresetSelectionView* presetSelection_ = nullptr;
    MainStreamingView* console_ = nullptr;
    OnboardingView* onboarding_ = nullptr;
    std::optional<Preset> selectedPreset_;
    bool showPresetSelection_ = true;
    bool showOnboarding_ = false;
    bool appeared_ = false;
};

}  // namespace orvane
