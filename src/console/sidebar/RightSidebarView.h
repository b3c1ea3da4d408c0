#pragma once

#include <QWidget>
#include <map>
#include <optional>

#include "console/sidebar/ConfigTab.h"
#include "document/StreamingScene.h"

class QScrollArea;
class QStackedWidget;
class QVariantAnimation;

namespace orvane {

class CameraBackend;
class CaptureBackend;
class RecordingControlsView;
class PresetTabView;
class RecordingManager;
class TeleprompterManager;
class WebServerManager;
class RemoteTabView;
class SceneTabView;
class SidebarTabButton;
class StreamManager;
class SymbolButton;

// The configuration panel on the right of the console: the one place where
// the selected scene, its sources and the preset are edited. Four tabs;
// collapses to a strip of their symbols.
class RightSidebarView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool isCollapsed READ isCollapsed WRITE setCollapsed NOTIFY isCollapsedChanged)
    Q_PROPERTY(orvane::ConfigTab selectedTab READ selectedTab WRITE setSelectedTab NOTIFY selectedTabChanged)

public:
    static constexpr int expandedWidth = 280;
    static constexpr int collapsedWidth = 50;
    static constexpr int animationMs = 200;

    explicit RightSidebarView(StreamManager& streamManager, QWidget* parent = nullptr);

    // The scene the panels edit, shared with the console.
    void setSelectedScene(const std::optional<StreamingScene>& scene);
    const std::optional<StreamingScene>& selectedScene() const;
    void setCaptureBackends(CaptureBackend* capture, CameraBackend* cameras);
    // The recorder the recording tab drives; none leaves the tab saying so.
    void setRecordingManager(RecordingManager* recorder);
    // The teleprompter the preset tab's block drives.
    void setTeleprompterManager(TeleprompterManager* teleprompter);
    // The remote server the remote tab drives.
    void setWebServer(WebServerManager* server);

    bool isCollapsed() const { return isCollapsed_; }
    void setCollapsed(bool collapsed);
    ConfigTab selectedTab() const { return selectedTab_; }
    void setSelectedTab(ConfigTab tab);
    // A tab's content; to fill the tabs that other panels provide.
    void setTabContent(ConfigTab tab, QWidget* content);
    QWidget* tabContent(ConfigTab tab) const;

    SceneTabView* sceneTab() const { return sceneTab_; }
    RecordingControlsView* recordingTab() const { return recordingTab_; }
    RemoteTabView* remoteTab() const { return remoteTab_; }
    PresetTabView* presetTab() const { return presetTab_; }
    SidebarTabButton* tabButton(ConfigTab tab) const { return tabButtons_.at(tab); }
    SidebarTabButton* collapsedTabButton(ConfigTab tab) const { return collapsedButtons_.at(tab); }
    SymbolButton* collapseButton() const { return collapse_; }
    SymbolButton* expandButton() const { return expand_; }

signals:
    void isCollapsedChanged(bool collapsed);
    void selectedTabChanged(orvane::ConfigTab tab);
    // A panel wrote the selected scene: the console takes it as its selection.
    void selectedSceneEdited(const orvane::StreamingScene& scene);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void animateWidth(int target);

    StreamManager& streamManager_;
    bool isCollapsed_ = false;
    ConfigTab selectedTab_ = ConfigTab::scene;
    QWidget* expanded_ = nullptr;
    QWidget* collapsed_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    std::map<ConfigTab, QScrollArea*> scrolls_;
    std::map<ConfigTab, SidebarTabButton*> tabButtons_;
    std::map<ConfigTab, SidebarTabButton*> collapsedButtons_;
    SymbolButton* collapse_ = nullptr;
    SymbolButton* expand_ = nullptr;
    SceneTabView* sceneTab_ = nullptr;
    RecordingControlsView* recordingTab_ = nullptr;
    RemoteTabView* remoteTab_ = nullptr;
    PresetTabView* presetTab_ = nullptr;
    bool shown_ = false;
    QVariantAnimation* widthAnimation_ = nullptr;
};

}  // namespace orvane
