#include "console/sidebar/SceneTransitionsSection.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>
#include <cmath>

#include "console/controls/SidebarStyle.h"
#include "console/controls/ToggleSwitch.h"
#include "console/presets/PresetEdit.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
// The slider counts steps of 0.05 s from 0.1 s to 2.0 s.
constexpr double step = 0.05;
int toTicks(double seconds) { return int(std::lround(seconds / step)); }
QString label(TransitionType type) {
    const auto text = toString(type);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}
}  // namespace

SceneTransitionsSection::SceneTransitionsSection(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* head = new QHBoxLayout;
    auto* headText = new QVBoxLayout;
    headText->setSpacing(2);
    headText->addWidget(SidebarStyle::head(QStringLiteral("SCENE TRANSITIONS")));
    headText->addWidget(SidebarStyle::caption(QStringLiteral("Configure smooth transitions between scenes")));
    head->addLayout(headText, 1);
    enabled_ = new ToggleSwitch(QStringLiteral("Scene Transitions"));
    enabled_->setLabelVisible(false);
    connect(enabled_, &ToggleSwitch::toggled, this, [this](bool on) {
        editCurrentPreset(streamManager_, [on](Preset& p) { p.sceneTransition.enabled = on; });
    });
    head->addWidget(enabled_, 0, Qt::AlignTop);
    column->addLayout(head);

    details_ = new QWidget;
    auto* details = new QVBoxLayout(details_);
    details->setContentsMargins(0, 0, 0, 0);
    details->setSpacing(8);
    auto* typeRow = new QHBoxLayout;
    typeRow->addWidget(SidebarStyle::label(QStringLiteral("Transition Type"), 11));
    type_ = new QPushButton;
    type_->setAccessibleName(QStringLiteral("Transition Type"));
    auto* menu = new QMenu(type_);
    auto* group = new QActionGroup(menu);
    group->setExclusive(true);
    for (TransitionType type : allCases<TransitionType>()) {
        QAction* action = menu->addAction(label(type));
        action->setCheckable(true);
        action->setData(int(type));
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, type] {
            editCurrentPreset(streamManager_, [type](Preset& p) { p.sceneTransition.type = type; });
        });
    }
    type_->setMenu(menu);
    typeRow->addWidget(type_, 1);
    details->addLayout(typeRow);
    auto* durationRow = new QHBoxLayout;
    durationRow->addWidget(SidebarStyle::label(QStringLiteral("Duration"), 11));
    duration_ = new QSlider(Qt::Horizontal);
    duration_->setAccessibleName(QStringLiteral("Duration"));
    duration_->setRange(toTicks(0.1), toTicks(2.0));
    connect(duration_, &QSlider::valueChanged, this, [this](int ticks) {
        const double seconds = ticks * step;
        editCurrentPreset(streamManager_, [seconds](Preset& p) { p.sceneTransition.duration = seconds; });
    });
    durationRow->addWidget(duration_, 1);
    durationText_ = SidebarStyle::label(QString(), 11, Theme::Weight::regular, Theme::gray());
    durationText_->setMinimumWidth(36);
    durationRow->addWidget(durationText_);
    details->addLayout(durationRow);
    auto* note = new QHBoxLayout;
    note->addWidget(SidebarStyle::symbol("info.circle", 11, Theme::blue()));
    note->addWidget(SidebarStyle::caption(QStringLiteral("Switch scenes to preview the transition effect")), 1);
    details->addLayout(note);
    column->addWidget(details_);

    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &SceneTransitionsSection::refresh);
    refresh();
}

void SceneTransitionsSection::refresh() {
    const auto& preset = streamManager_.currentPreset();
    setEnabled(preset.has_value());
    // With no preset nothing is on, and the read-out shows 0.30s rather
    // than the default configuration's length.
    SceneTransitionConfig config = preset ? preset->sceneTransition : SceneTransitionConfig{};
    if (!preset) {
        config.enabled = false;
        config.duration = noPresetDuration;
    }
    enabled_->setOn(config.enabled);
    details_->setVisible(config.enabled);
    type_->setText(label(config.type));
    for (QAction* action : type_->menu()->actions()) action->setChecked(action->data().toInt() == int(config.type));
    {
        const QSignalBlocker block(duration_);
        duration_->setValue(toTicks(config.duration));
    }
    durationText_->setText(QString::asprintf("%.2fs", config.duration));
}

}  // namespace orvane
