#include "console/scene_tab/SceneTabView.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "console/controls/QuickAddButton.h"
#include "console/controls/SidebarStyle.h"
#include "console/scene_tab/CameraConfigurationView.h"
#include "console/scene_tab/SceneBackgroundSection.h"
#include "console/scene_tab/SceneBrandingSection.h"
#include "console/scene_tab/SceneLayoutSection.h"
#include "console/scene_tab/SceneProgressBarSection.h"
#include "console/scene_tab/SceneSourcesList.h"
#include "console/scene_tab/ScreenWindowEffectsView.h"
#include "console/scene_tab/SlidesSourceSection.h"
#include "console/sheets/CameraSelectorView.h"
#include "console/sheets/ScreenSelectorView.h"
#include "console/sheets/WindowSelectorView.h"
#include "document/SourceFactory.h"
#include "engine/StreamManager.h"

namespace orvane {

SceneTabView::SceneTabView(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 16);
    column->setSpacing(14);
    const SceneEditor editor = [this](const SceneEdit& edit) { apply(edit); };

    auto* nameBlock = new QVBoxLayout;
    nameBlock->setSpacing(6);
    nameBlock->addWidget(SidebarStyle::label(QStringLiteral("Scene Name"), 12, Theme::Weight::semibold));
    nameField_ = new QLineEdit;
    nameField_->setPlaceholderText(QStringLiteral("Scene name"));
    nameField_->setAccessibleName(QStringLiteral("Scene Name"));
    nameField_->setFont(Theme::font(13));
    connect(nameField_, &QLineEdit::editingFinished, this, [this] { updateSceneName(nameField_->text()); });
    nameBlock->addWidget(nameField_);
    noSceneName_ = SidebarStyle::caption(QStringLiteral("No scene selected"), 11);
    nameBlock->addWidget(noSceneName_);
    column->addLayout(nameBlock);

    background_ = new SceneBackgroundSection(editor);
    column->addWidget(background_);
    layout_ = new SceneLayoutSection(editor);
    column->addWidget(layout_);
    column->addWidget(SidebarStyle::divider());

    sources_ = new SceneSourcesList;
    connect(sources_, &SceneSourcesList::selectRequested, this, &SceneTabView::selectSource);
    connect(sources_, &SceneSourcesList::deleteRequested, this, &SceneTabView::deleteSource);
    connect(sources_, &SceneSourcesList::manageRequested, this, &SceneTabView::manageSourcesRequested);
    column->addWidget(sources_);
    const SourceSettingsPanel::SourceUpdate update = [this](const Source& s) { updateSourceConfiguration(s); };
    cameraSettings_ = new CameraConfigurationView(update);
    column->addWidget(cameraSettings_);
    visualEffects_ = new ScreenWindowEffectsView(update);
    column->addWidget(visualEffects_);
    slides_ = new SlidesSourceSection(editor);
    column->addWidget(slides_);
    column->addWidget(SidebarStyle::divider());

    auto* addColumn = new QVBoxLayout;
    addColumn->setSpacing(6);
    addColumn->addWidget(SidebarStyle::head(QStringLiteral("ADD SOURCE")));
    addBlock_ = new QWidget;
    auto* buttons = new QVBoxLayout(addBlock_);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(6);
    addScreen_ = new QuickAddButton(QStringLiteral("Screen Capture"), QStringLiteral("Capture entire screen"),
                                    "rectangle.on.rectangle");
    addWindow_ = new QuickAddButton(QStringLiteral("Window Capture"), QStringLiteral("Capture specific window"),
                                    "macwindow");
    addCamera_ = new QuickAddButton(QStringLiteral("Camera"), QStringLiteral("Add webcam"), "video.fill");
    addSlides_ = new QuickAddButton(QStringLiteral("Slides"), QStringLiteral("Markdown presentation"),
                                    "rectangle.stack.fill");
    for (QuickAddButton* b : {addScreen_, addWindow_, addCamera_, addSlides_}) buttons->addWidget(b);
    connect(addScreen_, &QPushButton::clicked, this, [this] { showScreenSelector(); });
    connect(addWindow_, &QPushButton::clicked, this, [this] { showWindowSelector(); });
    connect(addCamera_, &QPushButton::clicked, this, [this] { showCameraSelector(); });
    connect(addSlides_, &QPushButton::clicked, this, &SceneTabView::addSlidesSource);
    addColumn->addWidget(addBlock_);
    addNone_ = new QWidget;
    auto* none = new QVBoxLayout(addNone_);
    none->addWidget(SidebarStyle::symbol("plus.rectangle.on.rectangle", 24, Theme::gray()), 0, Qt::AlignHCenter);
    none->addWidget(SidebarStyle::caption(QStringLiteral("Add scene to add sources"), 11), 0, Qt::AlignHCenter);
    addColumn->addWidget(addNone_);
    column->addLayout(addColumn);

    // Branding and the progress bar: what this scene shows of the preset's.
    column->addWidget(SidebarStyle::divider());
    branding_ = new SceneBrandingSection(streamManager_, editor);
    column->addWidget(branding_);
    progressBar_ = new SceneProgressBarSection(streamManager_, editor);
    column->addWidget(progressBar_);
    column->addStretch();
    refresh(true);
}

void SceneTabView::setCaptureBackends(CaptureBackend* capture, CameraBackend* cameras) {
    capture_ = capture;
    cameras_ = cameras;
}

void SceneTabView::setScene(const std::optional<StreamingScene>& scene) {
    const bool changed = scene.has_value() != scene_.has_value() || (scene && scene_ && scene->id != scene_->id);
    scene_ = scene;
    refresh(changed);
}

void SceneTabView::refresh(bool sceneChanged) {
    // The name field follows the selection, not every write, so what is
    // being typed is never replaced.
    if (sceneChanged || !nameField_->hasFocus())
        nameField_->setText(scene_ ? QString::fromStdString(scene_->name) : QString());
    nameField_->setVisible(scene_.has_value());
    noSceneName_->setVisible(!scene_);
    background_->setScene(scene_);
    layout_->setScene(scene_);
    sources_->setScene(scene_);
    slides_->setScene(scene_);
    // The selected source's own settings, for cameras and captures.
    const Source* selected = scene_ ? scene_->selectedSource() : nullptr;
    const bool camera = selected && selected->type == SourceType::camera;
    const bool capture = selected && (selected->type == SourceType::screen || selected->type == SourceType::window);
    if (camera) cameraSettings_->setSource(*selected);
    if (capture) visualEffects_->setSource(*selected);
    cameraSettings_->setVisible(camera);
    visualEffects_->setVisible(capture);
    addBlock_->setVisible(scene_.has_value());
    addNone_->setVisible(!scene_);
    branding_->setScene(scene_);
    progressBar_->setScene(scene_);
}

void SceneTabView::apply(const SceneEdit& edit) {
    if (!scene_) return;
    StreamingScene copy = *scene_;
    edit(copy);
    scene_ = copy;
    refresh(false);
    emit sceneWritten(copy);
    streamManager_.updateScene(copy);
}

void SceneTabView::updateSceneName(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty() || !scene_) return;
    if (scene_->name == trimmed.toStdString()) return;
    const std::string name = trimmed.toStdString();
    apply([name](StreamingScene& s) { s.name = name; });
}

bool SceneTabView::canAddSources() const {
    const auto& preset = streamManager_.currentPreset();
    return scene_ && preset && !preset->scenes.empty();
}

void SceneTabView::addScreenSource(const CaptureDisplay& display) {
    if (!canAddSources()) return;
    selectedDisplay_ = display.id;
    const DisplayChoice choice{display.id, display.displayName().toStdString()};
    apply([choice](StreamingScene& s) { SourceFactory::addScreenSource(s, choice); });
}

void SceneTabView::addWindowSource(const CaptureWindow& window) {
    if (!canAddSources()) return;
    selectedWindow_ = window.id;
    const WindowChoice choice{window.id, window.title.toStdString(), window.ownerName.toStdString()};
    apply([choice](StreamingScene& s) { SourceFactory::addWindowSource(s, choice); });
}

void SceneTabView::addCameraSource(const CameraDevice& camera) {
    if (!canAddSources()) return;
    selectedCamera_ = camera.id;
    const CameraChoice choice{camera.id.toStdString(), camera.name.toStdString()};
    apply([choice](StreamingScene& s) { SourceFactory::addCameraSource(s, choice); });
}

void SceneTabView::addSlidesSource() {
    if (!canAddSources()) return;
    apply([](StreamingScene& s) { SourceFactory::addSlidesSource(s); });
}

void SceneTabView::deleteSource(const Uuid& id) {
    if (!scene_) return;
    const bool present = std::any_of(scene_->sources.begin(), scene_->sources.end(),
                                     [&](const Source& s) { return s.id == id; });
    if (!present) return;
    apply([id](StreamingScene& s) {
        std::erase_if(s.sources, [&](const Source& source) { return source.id == id; });
        if (s.selectedSourceId && *s.selectedSourceId == id) {
            if (s.sources.empty())
                s.selectedSourceId.reset();
            else
                s.selectedSourceId = s.sources.front().id;
        }
    });
}

void SceneTabView::updateSourceConfiguration(const Source& source) {
    if (!scene_) return;
    const bool present = std::any_of(scene_->sources.begin(), scene_->sources.end(),
                                     [&](const Source& s) { return s.id == source.id; });
    if (!present) return;
    const Source updated = source;
    apply([updated](StreamingScene& s) {
        for (Source& existing : s.sources)
            if (existing.id == updated.id) existing = updated;
    });
}

void SceneTabView::selectSource(const Uuid& id) {
    apply([id](StreamingScene& s) { s.selectedSourceId = id; });
}

ScreenSelectorView* SceneTabView::showScreenSelector() {
    auto* sheet = new ScreenSelectorView(capture_, selectedDisplay_, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &ScreenSelectorView::displayChosen, this, &SceneTabView::addScreenSource);
    sheet->open();
    return sheet;
}

WindowSelectorView* SceneTabView::showWindowSelector() {
    auto* sheet = new WindowSelectorView(capture_, selectedWindow_, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &WindowSelectorView::windowChosen, this, &SceneTabView::addWindowSource);
    sheet->open();
    return sheet;
}

CameraSelectorView* SceneTabView::showCameraSelector() {
    auto* sheet = new CameraSelectorView(cameras_, selectedCamera_, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &CameraSelectorView::cameraChosen, this, &SceneTabView::addCameraSource);
    sheet->open();
    return sheet;
}

}  // namespace orvane
