#include "console/sidebar/ProgressBarSection.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/presets/PresetEdit.h"
#include "console/sidebar/ProgressBarConfigView.h"
#include "console/sidebar/ProgressStepEditor.h"
#include "document/Log.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
SymbolButton::Look progressStepLook(bool done) {
    SymbolButton::Look look;
    look.foreground = done ? Theme::green() : Theme::white(0.9);
    look.background = Theme::white(0.05);
    look.fontSize = 11;
    look.symbolSize = 13;
    look.paddingX = 8;
    look.paddingY = 5;
    return look;
}
}  // namespace

ProgressBarSection::ProgressBarSection(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* head = new QHBoxLayout;
    head->addWidget(SidebarStyle::head(QStringLiteral("PROGRESS BAR")), 1);
    gear_ = SidebarStyle::iconButton("gear", QStringLiteral("Progress Bar Configuration"), Theme::white(0.8), 13);
    connect(gear_, &QPushButton::clicked, this, [this] { showProgressBarConfig(); });
    head->addWidget(gear_);
    column->addLayout(head);

    enabled_ = new ToggleSwitch(QStringLiteral("Enabled"));
    // Named for what it switches, since "Enabled" alone says little to a
    // screen reader.
    enabled_->setAccessibleName(QStringLiteral("Progress Bar Enabled"));
    connect(enabled_, &ToggleSwitch::toggled, this, &ProgressBarSection::updatePresetProgressBar);
    column->addWidget(enabled_);

    details_ = new QWidget;
    auto* details = new QVBoxLayout(details_);
    details->setContentsMargins(0, 0, 0, 0);
    details->setSpacing(4);
    stepsCaption_ = SidebarStyle::label(QString(), 11, Theme::Weight::medium, Theme::white(0.8));
    details->addWidget(stepsCaption_);
    stepsColumn_ = new QVBoxLayout;
    stepsColumn_->setSpacing(4);
    details->addLayout(stepsColumn_);
    column->addWidget(details_);

    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &ProgressBarSection::refresh);
    refresh();
}

void ProgressBarSection::updatePresetProgressBar(bool enabled) {
    editCurrentPreset(streamManager_, [enabled](Preset& p) {
        if (!p.progressBar) p.progressBar = ProgressBarConfig{};
        p.progressBar->enabled = enabled;
    });
}

void ProgressBarSection::toggleStepCompletion(const Uuid& id) {
    const auto& current = streamManager_.currentPreset();
    if (!current || !current->progressBar) return;
    Preset copy = *current;
    const auto done = ProgressStepEditor::toggleStep(*copy.progressBar, id);
    if (!done) return;
    std::string title;
    for (const ProgressStep& step : copy.progressBar->steps)
        if (step.id == id) title = step.title;
    streamManager_.setCurrentPreset(copy);
    streamManager_.setProgressBarUpdateTimestamp(QDateTime::currentDateTimeUtc());
    logLine("✅ Progress step toggled: " + title + " = " + (*done ? "true" : "false"));
    streamManager_.presetStorage().savePreset(copy);
}

ProgressBarConfigView* ProgressBarSection::showProgressBarConfig() {
    auto* sheet = new ProgressBarConfigView(streamManager_, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
    return sheet;
}

void ProgressBarSection::refresh() {
    const auto& preset = streamManager_.currentPreset();
    setEnabled(preset.has_value());
    const ProgressBarConfig config = preset && preset->progressBar ? *preset->progressBar : ProgressBarConfig{};
    enabled_->setOn(config.enabled);
    details_->setVisible(config.enabled);
    stepsCaption_->setText(QStringLiteral("Steps (%1)").arg(config.steps.size()));

    const std::vector<ProgressStep> sorted = ProgressStepEditor::sortedByOrder(config);
    std::vector<Uuid> ids;
    for (const ProgressStep& step : sorted) ids.push_back(step.id);
    if (ids != shownIds_) {
        // A button may be inside its own click: hide now, delete later.
        for (SymbolButton* button : stepButtons_) {
            stepsColumn_->removeWidget(button);
            button->hide();
            button->deleteLater();
        }
        stepButtons_.clear();
        for (const ProgressStep& step : sorted) {
            auto* button = new SymbolButton(QString(), "circle");
            const Uuid id = step.id;
            connect(button, &QPushButton::clicked, this, [this, id] { toggleStepCompletion(id); });
            stepsColumn_->addWidget(button);
            stepButtons_.push_back(button);
        }
        shownIds_ = ids;
    }
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        SymbolButton* button = stepButtons_[i];
        const ProgressStep& step = sorted[i];
        button->setLook(progressStepLook(step.isCompleted));
        button->setSymbol(step.isCompleted ? "checkmark.circle.fill" : "circle");
        button->setLabel(QString::fromStdString(step.title));
        button->setStyleSheet(button->styleSheet() + QStringLiteral("QPushButton { text-align: left; }"));
        // Checkable, so that a screen reader hears whether the step is done.
        button->setCheckable(true);
        button->setChecked(step.isCompleted);
    }
}

}  // namespace orvane
