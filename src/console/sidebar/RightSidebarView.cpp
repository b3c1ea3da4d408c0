#include "console/sidebar/RightSidebarView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVariantAnimation>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/scene_tab/SceneTabView.h"
#include "console/sidebar/PresetTabView.h"
#include "console/sidebar/RecordingControlsView.h"
#include "console/sidebar/RemoteTabView.h"
#include "console/sidebar/SidebarTabButton.h"
#include "engine/StreamManager.h"

namespace orvane {

RightSidebarView::RightSidebarView(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    setObjectName(QStringLiteral("RightSidebarView"));
    setAccessibleName(QStringLiteral("Configuration"));
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Theme::sidebarGround());
    setPalette(pal);
    setFixedWidth(expandedWidth);
    // Thin scroll bars: the panel is narrow and the bars are only a hint.
    setStyleSheet(QStringLiteral(
        "QScrollBar:vertical { width: 6px; background: transparent; margin: 2px 0; }"
        "QScrollBar:horizontal { height: 6px; background: transparent; margin: 0 2px; }"
        "QScrollBar::handle { background: rgba(255,255,255,0.18); border-radius: 3px; min-height: 24px; min-width: 24px; }"
        "QScrollBar::handle:hover { background: rgba(255,255,255,0.3); }"
        "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
        "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }"));

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    // Expanded: head, tab row, the selected tab in a scroll area.
    expanded_ = new QWidget;
    auto* column = new QVBoxLayout(expanded_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(14, 10, 8, 6);
    head->addWidget(SidebarStyle::label(QStringLiteral("Configuration"), 13, Theme::Weight::semibold));
    head->addStretch();
    collapse_ = SidebarStyle::iconButton("sidebar.right", QStringLiteral("Collapse Sidebar"), Theme::white(0.7), 14);
    connect(collapse_, &QPushButton::clicked, this, [this] { setCollapsed(true); });
    head->addWidget(collapse_);
    column->addLayout(head);
    auto* tabs = new QHBoxLayout;
    tabs->setContentsMargins(4, 0, 4, 0);
    tabs->setSpacing(0);
    for (ConfigTab tab : allConfigTabs) {
        auto* button = new SidebarTabButton(tab, false);
        connect(button, &QPushButton::clicked, this, [this, tab] { setSelectedTab(tab); });
        tabs->addWidget(button);
        tabButtons_[tab] = button;
    }
    column->addLayout(tabs);
    column->addWidget(SidebarStyle::divider());
    pages_ = new QStackedWidget;
    for (ConfigTab tab : allConfigTabs) {
        auto* scroll = new QScrollArea;
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        scroll->setAccessibleName(configTabTitle(tab));
        pages_->addWidget(scroll);
        scrolls_[tab] = scroll;
    }
    column->addWidget(pages_, 1);
    outer->addWidget(expanded_);

    // Collapsed: the expand button and the tab symbols.
    collapsed_ = new QWidget;
    auto* strip = new QVBoxLayout(collapsed_);
    strip->setContentsMargins(0, 0, 0, 0);
    strip->setSpacing(0);
    expand_ = SidebarStyle::iconButton("sidebar.right", QStringLiteral("Expand Sidebar"), Theme::white(0.7), 14);
    expand_->setFixedSize(50, 44);
    connect(expand_, &QPushButton::clicked, this, [this] { setCollapsed(false); });
    strip->addWidget(expand_);
    for (ConfigTab tab : allConfigTabs) {
        auto* button = new SidebarTabButton(tab, true);
        connect(button, &QPushButton::clicked, this, [this, tab] {
            setSelectedTab(tab);
            setCollapsed(false);
        });
        strip->addWidget(button);
        collapsedButtons_[tab] = button;
    }
    strip->addStretch();
    outer->addWidget(collapsed_);
    collapsed_->hide();

    sceneTab_ = new SceneTabView(streamManager_);
    connect(sceneTab_, &SceneTabView::sceneWritten, this, &RightSidebarView::selectedSceneEdited);
    setTabContent(ConfigTab::scene, sceneTab_);
    setRecordingManager(nullptr);
    presetTab_ = new PresetTabView(streamManager_);
    setTabContent(ConfigTab::preset, presetTab_);
    remoteTab_ = new RemoteTabView;
    setTabContent(ConfigTab::remote, remoteTab_);

    widthAnimation_ = new QVariantAnimation(this);
    widthAnimation_->setDuration(animationMs);
    widthAnimation_->setEasingCurve(QEasingCurve::InOutCubic);
    connect(widthAnimation_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setFixedWidth(value.toInt()); });
    setSelectedTab(ConfigTab::scene);
    tabButtons_[ConfigTab::scene]->setSelected(true);
    collapsedButtons_[ConfigTab::scene]->setSelected(true);
}

void RightSidebarView::setSelectedScene(const std::optional<StreamingScene>& scene) { sceneTab_->setScene(scene); }

const std::optional<StreamingScene>& RightSidebarView::selectedScene() const { return sceneTab_->scene(); }

void RightSidebarView::setCaptureBackends(CaptureBackend* capture, CameraBackend* cameras) {
    sceneTab_->setCaptureBackends(capture, cameras);
}

void RightSidebarView::setRecordingManager(RecordingManager* recorder) {
    recordingTab_ = new RecordingControlsView(streamManager_, recorder);
    setTabContent(ConfigTab::recording, recordingTab_);
}

void RightSidebarView::setTeleprompterManager(TeleprompterManager* teleprompter) {
    presetTab_->setTeleprompterManager(teleprompter);
}

void RightSidebarView::setWebServer(WebServerManager* server) { remoteTab_->setWebServer(server); }

void RightSidebarView::setTabContent(ConfigTab tab, QWidget* content) {
    QScrollArea* scroll = scrolls_.at(tab);
    delete scroll->takeWidget();
    scroll->setWidget(content);
}

QWidget* RightSidebarView::tabContent(ConfigTab tab) const { return scrolls_.at(tab)->widget(); }

void RightSidebarView::setSelectedTab(ConfigTab tab) {
    pages_->setCurrentWidget(scrolls_.at(tab));
    if (selectedTab_ == tab) return;
    selectedTab_ = tab;
    for (auto& [t, button] : tabButtons_) button->setSelected(t == tab);
    for (auto& [t, button] : collapsedButtons_) button->setSelected(t == tab);
    emit selectedTabChanged(tab);
}

void RightSidebarView::setCollapsed(bool collapsed) {
    if (isCollapsed_ == collapsed) return;
    isCollapsed_ = collapsed;
    expanded_->setVisible(!collapsed);
    collapsed_->setVisible(collapsed);
    animateWidth(collapsed ? collapsedWidth : expandedWidth);
    emit isCollapsedChanged(collapsed);
}

void RightSidebarView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The remote tab takes the server's state once, when the sidebar first
    // comes on screen.
    if (!shown_) {
        shown_ = true;
        remoteTab_->syncWithServer();
    }
}

void RightSidebarView::animateWidth(int target) {
    widthAnimation_->stop();
    widthAnimation_->setStartValue(width());
    widthAnimation_->setEndValue(target);
    widthAnimation_->start();
}

}  // namespace orvane
