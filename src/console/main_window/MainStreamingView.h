#pragma once

#include <QPointer>
#include <QWidget>
#include <optional>

#include "document/StreamingScene.h"

namespace orvane {

class BottomBarView;
class CenterContentView;
class ConsoleKeyFilter;
class FrameSource;
class KeyboardNavigationManager;
class LeftSidebarView;
class RightSidebarView;
class StreamManager;
class TopBarView;
class WebServerManager;
class WindowManager;
class AddSceneView;
class SceneSourcesView;

// The console: top bar, scene list, the two stages, the configuration
// sidebar, bottom bar. It keeps the
// scene that the panels edit in step with the session and delivers the
// console's keys.
class MainStreamingView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString presetName READ presetName WRITE setPresetName NOTIFY presetNameChanged)

public:
    static constexpr int focusDelayMs = 100;

    MainStreamingView(StreamManager& streamManager, KeyboardNavigationManager& keyboardNavManager,
                      WindowManager& windowManager, const FrameSource* frames, QWidget* parent = nullptr);

    const std::optional<StreamingScene>& selectedScene() const { return selectedScene_; }
    void setSelectedScene(const std::optional<StreamingScene>& scene);

    QString presetName() const { return presetName_; }
    void setPresetName(const QString& name);
    void loadPresetName();
    void savePreset();

    // Called each time the console comes on screen.
    void appear();
    AddSceneView* showAddScene();
    // The source manager on the selected scene; none without a scene.
    SceneSourcesView* showManageSources();
    bool showingManageSources() const { return !manageSources_.isNull(); }
    // The remote server, for the two bars and the remote tab.
    void setWebServer(WebServerManager* server);

    TopBarView* topBar() const { return topBar_; }
    LeftSidebarView* leftSidebar() const { return leftSidebar_; }
    CenterContentView* centerContent() const { return center_; }
    BottomBarView* bottomBar() const { return bottomBar_; }
    RightSidebarView* rightSidebar() const { return rightSidebar_; }

signals:
    void changePresetRequested();
    void permissionsRequested();
    void presetNameChanged(const QString& name);
    void selectedSceneChanged();

private:
    void followSession();
    void refreshSceneList();

    StreamManager& streamManager_;
    std::optional<StreamingScene> selectedScene_;
    QString presetName_;
    TopBarView* topBar_ = nullptr;
    LeftSidebarView* leftSidebar_ = nullptr;
    CenterContentView* center_ = nullptr;
    BottomBarView* bottomBar_ = nullptr;
    RightSidebarView* rightSidebar_ = nullptr;
    ConsoleKeyFilter* keys_ = nullptr;
    QPointer<SceneSourcesView> manageSources_;
};

}  // namespace orvane
