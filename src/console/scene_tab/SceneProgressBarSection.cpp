#include "console/scene_tab/SceneProgressBarSection.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/ToggleSwitch.h"
#include "engine/StreamManager.h"

namespace orvane {

SceneProgressBarSection::SceneProgressBarSection(StreamManager& streamManager, SceneEditor editor,
                                                 QWidget* parent)
    : QWidget(parent), streamManager_(streamManager), editor_(std::move(editor)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    // The rule above the block belongs to it, so that it goes away with it.
    column->addWidget(SidebarStyle::divider());
    column->addSpacing(6);
    column->addWidget(SidebarStyle::head(QStringLiteral("PROGRESS BAR")));
    noScene_ = SidebarStyle::caption(QStringLiteral("Select a scene to configure progress bar"), 11);
    column->addWidget(noScene_);
    switchRow_ = new QWidget;
    auto* row = new QHBoxLayout(switchRow_);
    row->setContentsMargins(0, 0, 0, 0);
    show_ = new ToggleSwitch(QStringLiteral("Show in This Scene"));
    show_->setFont(Theme::font(12, Theme::Weight::medium));
    connect(show_, &ToggleSwitch::toggled, this,
            [this](bool on) { editor_([on](StreamingScene& s) { s.progressBarEnabled = on; }); });
    row->addWidget(show_);
    column->addWidget(switchRow_);

    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &SceneProgressBarSection::refresh);
    refresh();
}

void SceneProgressBarSection::setScene(const std::optional<StreamingScene>& scene) {
    scene_ = scene;
    refresh();
}

void SceneProgressBarSection::refresh() {
    const auto& preset = streamManager_.currentPreset();
    const bool presetOn = preset && preset->progressBar && preset->progressBar->enabled;
    // Without a scene the hint stands; with one, the switch only while the
    // preset's progress bar is on.
    const bool shown = !scene_ || presetOn;
    // A widget without a parent would become a window of its own if shown.
    if (parentWidget() || !shown) setVisible(shown);
    noScene_->setVisible(!scene_);
    switchRow_->setVisible(scene_.has_value());
    show_->setOn(scene_ && scene_->progressBarEnabled);
}

}  // namespace orvane
