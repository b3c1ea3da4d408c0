#include "console/sidebar/PresetTabView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "console/controls/SegmentedButton.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/ToggleSwitch.h"
#include "console/presets/PresetEdit.h"
#include "console/sidebar/PresetBrandingSection.h"
#include "console/sidebar/ProgressBarSection.h"
#include "console/sidebar/SceneTransitionsSection.h"
#include "engine/StreamManager.h"
#include "teleprompter/TeleprompterSection.h"

namespace orvane {

namespace {
// A titled row with its explanation below and a switch at the right.
QHBoxLayout* switchRow(const QString& title, const QString& explanation, ToggleSwitch* toggle) {
    auto* row = new QHBoxLayout;
    auto* text = new QVBoxLayout;
    text->setSpacing(2);
    text->addWidget(SidebarStyle::label(title, 12, Theme::Weight::semibold));
    text->addWidget(SidebarStyle::caption(explanation));
    row->addLayout(text, 1);
    toggle->setLabelVisible(false);
    row->addWidget(toggle, 0, Qt::AlignTop);
    return row;
}
}  // namespace

PresetTabView::PresetTabView(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 16);
    column->setSpacing(14);

    branding_ = new PresetBrandingSection(streamManager_);
    column->addWidget(branding_);
    column->addWidget(SidebarStyle::divider());
    progressBar_ = new ProgressBarSection(streamManager_);
    column->addWidget(progressBar_);
    column->addWidget(SidebarStyle::divider());

    transitions_ = new SceneTransitionsSection(streamManager_);
    column->addWidget(transitions_);
    column->addWidget(SidebarStyle::divider());

    hideProgram_ = new ToggleSwitch(QStringLiteral("Hide Program When Pop Out"));
    connect(hideProgram_, &ToggleSwitch::toggled, this, [this](bool on) {
        editCurrentPreset(streamManager_, [on](Preset& p) { p.hideProgramWhenPopout = on; });
    });
    column->addLayout(switchRow(QStringLiteral("Hide Program When Pop Out"),
                                QStringLiteral("Save resources by hiding Program view when output window is active"),
                                hideProgram_));
    column->addWidget(SidebarStyle::divider());

    column->addWidget(SidebarStyle::label(QStringLiteral("Drawing Button Position"), 12, Theme::Weight::semibold));
    column->addWidget(SidebarStyle::caption(QStringLiteral("Configure where the floating drawing button appears")));
    auto* grid = new QGridLayout;
    grid->setSpacing(0);
    int i = 0;
    for (DrawingButtonPosition position : allCases<DrawingButtonPosition>()) {
        const auto text = toString(position);
        const auto edge = i % 2 == 0 ? SegmentedButton::Edge::first : SegmentedButton::Edge::last;
        auto* button = new SegmentedButton(QString::fromUtf8(text.data(), qsizetype(text.size())), edge);
        connect(button, &QPushButton::clicked, this,
                [this, position] { streamManager_.drawing().setDrawingButtonPosition(position); });
        grid->addWidget(button, i / 2, i % 2);
        positions_[position] = button;
        ++i;
    }
    grid->setVerticalSpacing(4);
    column->addLayout(grid);
    column->addWidget(SidebarStyle::divider());

    showDrawing_ = new ToggleSwitch(QStringLiteral("Show Drawing Button"));
    connect(showDrawing_, &ToggleSwitch::toggled, &streamManager_.drawing(), &DrawingState::setShowDrawingButton);
    column->addLayout(switchRow(QStringLiteral("Show Drawing Button"),
                                QStringLiteral("Enable or disable the floating drawing button"), showDrawing_));
    column->addStretch();

    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &PresetTabView::refresh);
    connect(&streamManager_.drawing(), &DrawingState::drawingButtonPositionChanged, this, &PresetTabView::refresh);
    connect(&streamManager_.drawing(), &DrawingState::showDrawingButtonChanged, this, &PresetTabView::refresh);
    refresh();
}

void PresetTabView::setTeleprompterManager(TeleprompterManager* teleprompter) {
    if (teleprompter_ || !teleprompter) return;
    auto* column = static_cast<QVBoxLayout*>(layout());
    // Below the transitions and their divider.
    const int at = column->indexOf(transitions_) + 2;
    teleprompter_ = new TeleprompterSection(streamManager_, *teleprompter);
    column->insertWidget(at, teleprompter_);
    column->insertWidget(at + 1, SidebarStyle::divider());
}

void PresetTabView::refresh() {
    const auto& preset = streamManager_.currentPreset();
    hideProgram_->setEnabled(preset.has_value());
    hideProgram_->setOn(preset ? preset->hideProgramWhenPopout : Preset{}.hideProgramWhenPopout);
    for (auto& [position, button] : positions_)
        button->setChecked(position == streamManager_.drawing().drawingButtonPosition());
    showDrawing_->setOn(streamManager_.drawing().showDrawingButton());
}

}  // namespace orvane
