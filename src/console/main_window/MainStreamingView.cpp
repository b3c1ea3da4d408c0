#include "console/main_window/MainStreamingView.h"

#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QTimer>
#include <QVBoxLayout>

#include "console/bars/BottomBarView.h"
#include "console/bars/TopBarView.h"
#include "console/controls/Theme.h"
#include "console/main_window/ConsoleKeyFilter.h"
#include "console/scene_list/LeftSidebarView.h"
#include "console/scene_tab/SceneTabView.h"
#include "console/sheets/AddSceneView.h"
#include "console/sheets/SceneSourcesView.h"
#include "console/sidebar/RightSidebarView.h"
#include "console/stages/CenterContentView.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
QFrame* divider(bool vertical) {
    auto* line = new QFrame;
    line->setStyleSheet(QStringLiteral("background: rgba(255,255,255,0.1);"));
    if (vertical)
        line->setFixedWidth(1);
    else
        line->setFixedHeight(1);
    return line;
}
}  // namespace

MainStreamingView::MainStreamingView(StreamManager& streamManager, KeyboardNavigationManager& keyboardNavManager,
                                     WindowManager& windowManager, const FrameSource* frames, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    setObjectName(QStringLiteral("MainStreamingView"));
    setAccessibleName(QStringLiteral("Console"));
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Theme::consoleGround());
    setPalette(pal);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    topBar_ = new TopBarView(streamManager_, windowManager);
    column->addWidget(topBar_);
    column->addWidget(divider(false));

    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    leftSidebar_ = new LeftSidebarView;
    row->addWidget(leftSidebar_);
    row->addWidget(divider(true));
    center_ = new CenterContentView(streamManager_, frames);
    row->addWidget(center_, 1);
    row->addWidget(divider(true));
    rightSidebar_ = new RightSidebarView(streamManager_);
    row->addWidget(rightSidebar_);
    column->addLayout(row, 1);
    column->addWidget(divider(false));
    bottomBar_ = new BottomBarView(streamManager_);
    column->addWidget(bottomBar_);

    connect(leftSidebar_, &LeftSidebarView::sceneSelected, &streamManager_, &StreamManager::switchToScene);
    connect(leftSidebar_, &LeftSidebarView::sceneDeleteRequested, &streamManager_, &StreamManager::deleteScene);
    connect(leftSidebar_, &LeftSidebarView::addSceneRequested, this, [this] { showAddScene(); });

    // A panel of the sidebar wrote the selected scene; the session has it
    // already, the console takes the copy as its selection.
    connect(rightSidebar_, &RightSidebarView::selectedSceneEdited, this, [this](const StreamingScene& scene) {
        selectedScene_ = scene;
        refreshSceneList();
        emit selectedSceneChanged();
    });

    connect(rightSidebar_->sceneTab(), &SceneTabView::manageSourcesRequested, this, [this] { showManageSources(); });

    connect(topBar_, &TopBarView::changePresetRequested, this, &MainStreamingView::changePresetRequested);
    connect(topBar_, &TopBarView::permissionsRequested, this, &MainStreamingView::permissionsRequested);
    connect(topBar_, &TopBarView::presetNameEdited, this, [this](const QString& name) {
        setPresetName(name);
        savePreset();
    });

    connect(&streamManager_, &StreamManager::activeSceneChanged, this, &MainStreamingView::followSession);
    connect(&streamManager_, &StreamManager::liveSceneIdChanged, this,
            [this] { leftSidebar_->setLiveSceneId(streamManager_.liveSceneId()); });
    leftSidebar_->setLiveSceneId(streamManager_.liveSceneId());
    connect(&streamManager_, &StreamManager::currentPresetChanged, this, [this] {
        followSession();
        loadPresetName();
    });

    keys_ = new ConsoleKeyFilter(this, keyboardNavManager, this);
    qApp->installEventFilter(keys_);
    connect(keys_, &ConsoleKeyFilter::digitHandled, this, [this] {
        if (streamManager_.activeScene()) setSelectedScene(streamManager_.activeScene());
    });
    refreshSceneList();
}

void MainStreamingView::setSelectedScene(const std::optional<StreamingScene>& scene) {
    selectedScene_ = scene;
    rightSidebar_->setSelectedScene(scene);
    refreshSceneList();
    emit selectedSceneChanged();
}

void MainStreamingView::setPresetName(const QString& name) {
    if (presetName_ == name) return;
    presetName_ = name;
    topBar_->setPresetName(name);
    emit presetNameChanged(name);
}

void MainStreamingView::loadPresetName() {
    const auto& preset = streamManager_.currentPreset();
    setPresetName(preset ? QString::fromStdString(preset->name) : QStringLiteral("Untitled Preset"));
}

void MainStreamingView::savePreset() {
    const auto& current = streamManager_.currentPreset();
    if (!current) return;
    Preset copy = *current;
    copy.name = presetName_.toStdString();
    streamManager_.setCurrentPreset(copy);
    streamManager_.presetStorage().savePreset(copy);
}

void MainStreamingView::appear() {
    const auto& preset = streamManager_.currentPreset();
    if (!selectedScene_ && preset && !preset->scenes.empty()) {
        selectedScene_ = preset->scenes.front();
        streamManager_.switchToScene(preset->scenes.front());
    }
    if (streamManager_.activeScene()) selectedScene_ = streamManager_.activeScene();
    rightSidebar_->setSelectedScene(selectedScene_);
    refreshSceneList();
    QTimer::singleShot(focusDelayMs, this, [this] {
        setFocus(Qt::OtherFocusReason);
        loadPresetName();
    });
}

void MainStreamingView::followSession() {
    const auto& active = streamManager_.activeScene();
    if (active && (!selectedScene_ || selectedScene_->id != active->id)) {
        setSelectedScene(active);
        return;
    }
    // The same scene, changed by the session: the panels edit the new copy.
    if (active && selectedScene_) {
        selectedScene_ = active;
        rightSidebar_->setSelectedScene(active);
    }
    refreshSceneList();
}

void MainStreamingView::refreshSceneList() {
    const auto& preset = streamManager_.currentPreset();
    std::optional<Uuid> selectedId;
    if (selectedScene_) selectedId = selectedScene_->id;
    leftSidebar_->setScenes(preset ? preset->scenes : std::vector<StreamingScene>{}, selectedId);
}

AddSceneView* MainStreamingView::showAddScene() {
    auto* sheet = new AddSceneView(streamManager_, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &AddSceneView::sceneAdded, this, [this](const StreamingScene& scene) { setSelectedScene(scene); });
    sheet->open();
    return sheet;
}

SceneSourcesView* MainStreamingView::showManageSources() {
    if (!selectedScene_) return nullptr;
    if (manageSources_) return manageSources_;
    manageSources_ = new SceneSourcesView(streamManager_, *selectedScene_,
                                          rightSidebar_->sceneTab()->captureBackend(), window());
    manageSources_->setAttribute(Qt::WA_DeleteOnClose);
    // The sheet writes through the selected scene, as the sidebar does.
    connect(manageSources_, &SceneSourcesView::sceneSynced, this, [this](const StreamingScene& scene) {
        if (!selectedScene_ || selectedScene_->id != scene.id) return;
        selectedScene_ = scene;
        rightSidebar_->setSelectedScene(scene);
        refreshSceneList();
        emit selectedSceneChanged();
    });
    manageSources_->open();
    return manageSources_;
}

void MainStreamingView::setWebServer(WebServerManager* server) {
    topBar_->setWebServer(server);
    bottomBar_->setWebServer(server);
    rightSidebar_->setWebServer(server);
}

}  // namespace orvane
