#include "console/scene_tab/SceneBrandingSection.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/ToggleSwitch.h"
#include "engine/StreamManager.h"

namespace orvane {

SceneBrandingSection::SceneBrandingSection(StreamManager& streamManager, SceneEditor editor, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager), editor_(std::move(editor)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    noScene_ = SidebarStyle::caption(QStringLiteral("Select a scene to configure branding"), 11);
    column->addWidget(noScene_);

    body_ = new QWidget;
    auto* body = new QVBoxLayout(body_);
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(8);
    auto* head = new QHBoxLayout;
    head->setSpacing(6);
    head->addWidget(SidebarStyle::symbol("tag.fill", 12, Theme::purple()));
    head->addWidget(SidebarStyle::head(QStringLiteral("SCENE BRANDING")), 1);
    body->addLayout(head);
    noBranding_ = SidebarStyle::caption(QStringLiteral("No preset branding configured"), 11);
    body->addWidget(noBranding_);

    withBranding_ = new QWidget;
    auto* with = new QVBoxLayout(withBranding_);
    with->setContentsMargins(0, 0, 0, 0);
    with->setSpacing(6);
    // The switch carries its own label, so that a screen reader finds one
    // control by that name.
    enabled_ = new ToggleSwitch(QStringLiteral("Enable Preset Branding"));
    enabled_->setFont(Theme::font(12, Theme::Weight::medium));
    connect(enabled_, &ToggleSwitch::toggled, this,
            [this](bool on) { editor_([on](StreamingScene& s) { s.brandingEnabled = on; }); });
    with->addWidget(enabled_);
    with->addWidget(SidebarStyle::caption(QStringLiteral("Show/hide branding for this scene")));

    summary_ = SidebarStyle::card();
    auto* summary = new QVBoxLayout(summary_);
    summary->setContentsMargins(10, 8, 10, 8);
    summary->setSpacing(4);
    summary->addWidget(SidebarStyle::label(QStringLiteral("Using Preset Branding"), 11, Theme::Weight::semibold,
                                           Theme::green()));
    text_ = SidebarStyle::label(QString(), 11, Theme::Weight::regular, Theme::white(0.85));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    summary->addWidget(text_);
    logo_ = new QWidget;
    auto* logo = new QHBoxLayout(logo_);
    logo->setContentsMargins(0, 0, 0, 0);
    logo->setSpacing(4);
    logo->addWidget(SidebarStyle::symbol("photo", 11, Theme::white(0.85)));
    logo->addWidget(SidebarStyle::label(QStringLiteral("Logo attached"), 11, Theme::Weight::regular,
                                        Theme::white(0.85)),
                    1);
    summary->addWidget(logo_);
    summary->addWidget(SidebarStyle::caption(QStringLiteral("Configure in Preset Settings"), 9));
    with->addWidget(summary_);
    body->addWidget(withBranding_);
    column->addWidget(body_);

    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &SceneBrandingSection::refresh);
    refresh();
}

void SceneBrandingSection::setScene(const std::optional<StreamingScene>& scene) {
    scene_ = scene;
    refresh();
}

void SceneBrandingSection::refresh() {
    noScene_->setVisible(!scene_);
    body_->setVisible(scene_.has_value());
    if (!scene_) return;
    const auto& preset = streamManager_.currentPreset();
    const std::optional<BrandingConfig> branding = preset ? preset->branding : std::nullopt;
    // With no branding on the preset there is nothing to show, so nothing
    // to switch.
    noBranding_->setVisible(!branding);
    withBranding_->setVisible(branding.has_value());
    if (!branding) return;
    enabled_->setOn(scene_->brandingEnabled);
    summary_->setVisible(scene_->brandingEnabled);
    text_->setVisible(!branding->text.empty());
    text_->setText(QStringLiteral("Text: ") + QString::fromStdString(branding->text));
    logo_->setVisible(branding->logoImagePath.has_value());
}

}  // namespace orvane
