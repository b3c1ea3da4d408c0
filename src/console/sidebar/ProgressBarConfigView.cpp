#include "console/sidebar/ProgressBarConfigView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <cmath>

#include "console/controls/ColorSwatchButton.h"
#include "console/controls/CaptionedSlider.h"
#include "console/controls/SegmentedButton.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/sidebar/AddStepView.h"
#include "console/sidebar/ProgressStepEditor.h"
#include "console/sidebar/StepRowView.h"
#include "document/Log.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
QLabel* progressSheetSectionHead(const QString& text) {
    QLabel* head = SidebarStyle::head(text);
    head->setContentsMargins(0, 6, 0, 0);
    return head;
}

QString progressPercent(double value) { return QString::number(std::lround(value * 100)) + QStringLiteral("%"); }
}  // namespace

ProgressBarConfigView::ProgressBarConfigView(StreamManager& streamManager, QWidget* parent)
    : QDialog(parent), streamManager_(streamManager) {
    setWindowTitle(QStringLiteral("Progress Bar Configuration"));
    setAccessibleName(QStringLiteral("Progress Bar Configuration"));
    setModal(true);
    setMinimumSize(420, 660);
    setObjectName(QStringLiteral("progressBarSheet"));
    // The sidebar's thin scroll bars, since a sheet is a window of its own.
    setStyleSheet(QStringLiteral(
        "#progressBarSheet { background: rgb(33,38,46); }"
        "QScrollBar:vertical { width: 6px; background: transparent; margin: 2px 0; }"
        "QScrollBar::handle { background: rgba(255,255,255,0.18); border-radius: 3px; min-height: 24px; }"
        "QScrollBar::handle:hover { background: rgba(255,255,255,0.3); }"
        "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
        "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }"));

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(20, 14, 14, 10);
    head->addWidget(SidebarStyle::label(QStringLiteral("Progress Bar Configuration"), 16, Theme::Weight::bold), 1);
    auto* done = new SymbolButton(QStringLiteral("Done"), std::string());
    SymbolButton::Look doneLook;
    doneLook.background = Theme::purple();
    doneLook.fontSize = 12;
    doneLook.paddingY = 6;
    doneLook.paddingX = 14;
    doneLook.bold = true;
    done->setLook(doneLook);
    done_ = done;
    connect(done_, &QPushButton::clicked, this, [this] {
        saveConfiguration(config());
        accept();
    });
    head->addWidget(done_);
    outer->addLayout(head);
    outer->addWidget(SidebarStyle::divider());

    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* body = new QWidget;
    body->setObjectName(QStringLiteral("progressBarSheetBody"));
    body->setStyleSheet(QStringLiteral("#progressBarSheetBody { background: transparent; }"));
    scroll->viewport()->setAutoFillBackground(false);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(20, 14, 20, 20);
    column->setSpacing(10);

    enabled_ = new ToggleSwitch(QStringLiteral("Enable Progress Bar"));
    enabled_->setFont(Theme::font(12, Theme::Weight::medium));
    connect(enabled_, &ToggleSwitch::toggled, this,
            [this](bool on) { edit([on](ProgressBarConfig& c) { c.enabled = on; }); });
    column->addWidget(enabled_);
    column->addWidget(SidebarStyle::divider());

    column->addWidget(progressSheetSectionHead(QStringLiteral("STEPS")));
    rowsColumn_ = new QVBoxLayout;
    rowsColumn_->setSpacing(4);
    column->addLayout(rowsColumn_);
    empty_ = SidebarStyle::caption(QStringLiteral("No steps added yet"), 11);
    column->addWidget(empty_);
    auto* add = new SymbolButton(QStringLiteral("Add Step"), "plus.circle.fill");
    SymbolButton::Look addLook;
    addLook.foreground = Theme::blue();
    addLook.background = Theme::withAlpha(Theme::blue(), 0.15);
    addLook.fontSize = 11;
    addLook.symbolSize = 12;
    addLook.paddingY = 6;
    add->setLook(addLook);
    addStep_ = add;
    connect(addStep_, &QPushButton::clicked, this, [this] { showAddStep(); });
    column->addWidget(addStep_);
    column->addWidget(SidebarStyle::divider());

    column->addWidget(progressSheetSectionHead(QStringLiteral("LAYOUT")));
    column->addWidget(SidebarStyle::label(QStringLiteral("Orientation"), 11));
    auto* orientation = new QHBoxLayout;
    orientation->setSpacing(0);
    horizontal_ = new SegmentedButton(QStringLiteral("Horizontal"), SegmentedButton::Edge::first);
    vertical_ = new SegmentedButton(QStringLiteral("Vertical"), SegmentedButton::Edge::last);
    connect(horizontal_, &QPushButton::clicked, this,
            [this] { edit([](ProgressBarConfig& c) { c.orientation = ProgressBarOrientation::horizontal; }); });
    connect(vertical_, &QPushButton::clicked, this,
            [this] { edit([](ProgressBarConfig& c) { c.orientation = ProgressBarOrientation::vertical; }); });
    orientation->addWidget(horizontal_);
    orientation->addWidget(vertical_);
    column->addLayout(orientation);
    column->addWidget(SidebarStyle::label(QStringLiteral("Position"), 11));
    auto* position = new QHBoxLayout;
    position->setSpacing(0);
    firstPosition_ = new SegmentedButton(QStringLiteral("Top"), SegmentedButton::Edge::first);
    secondPosition_ = new SegmentedButton(QStringLiteral("Bottom"), SegmentedButton::Edge::last);
    connect(firstPosition_, &QPushButton::clicked, this, [this] {
        edit([](ProgressBarConfig& c) {
            c.position = c.orientation == ProgressBarOrientation::horizontal ? ProgressBarPosition::top
                                                                              : ProgressBarPosition::left;
        });
    });
    connect(secondPosition_, &QPushButton::clicked, this, [this] {
        edit([](ProgressBarConfig& c) {
            c.position = c.orientation == ProgressBarOrientation::horizontal ? ProgressBarPosition::bottom
                                                                              : ProgressBarPosition::right;
        });
    });
    position->addWidget(firstPosition_);
    position->addWidget(secondPosition_);
    column->addLayout(position);
    size_ = new CaptionedSlider(QStringLiteral("Size"), 40, 120, 10, [](double v) {
        return QStringLiteral("Size: %1px").arg(std::lround(v));
    });
    connect(size_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](ProgressBarConfig& c) { c.size = v; }); });
    column->addWidget(size_);
    opacity_ = new CaptionedSlider(QStringLiteral("Opacity"), 0.3, 1.0, 0.1,
                                 [](double v) { return QStringLiteral("Opacity: ") + progressPercent(v); });
    connect(opacity_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](ProgressBarConfig& c) { c.opacity = v; }); });
    column->addWidget(opacity_);
    column->addWidget(SidebarStyle::divider());

    column->addWidget(progressSheetSectionHead(QStringLiteral("COLORS")));
    completed_ = new ColorSwatchButton(QStringLiteral("Completed"));
    pending_ = new ColorSwatchButton(QStringLiteral("Pending"));
    text_ = new ColorSwatchButton(QStringLiteral("Text"));
    connect(completed_, &ColorSwatchButton::colorChosen, this,
            [this](const CodableColor& color) { edit([color](ProgressBarConfig& c) { c.completedColor = color; }); });
    connect(pending_, &ColorSwatchButton::colorChosen, this,
            [this](const CodableColor& color) { edit([color](ProgressBarConfig& c) { c.pendingColor = color; }); });
    connect(text_, &ColorSwatchButton::colorChosen, this,
            [this](const CodableColor& color) { edit([color](ProgressBarConfig& c) { c.textColor = color; }); });
    column->addWidget(completed_);
    column->addWidget(pending_);
    column->addWidget(text_);
    textSize_ = new CaptionedSlider(QStringLiteral("Text Size"), 10, 24, 2, [](double v) {
        return QStringLiteral("Text Size: %1pt").arg(std::lround(v));
    });
    connect(textSize_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](ProgressBarConfig& c) { c.textSize = v; }); });
    column->addWidget(textSize_);
    column->addStretch();

    scroll->setWidget(body);
    outer->addWidget(scroll, 1);

    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &ProgressBarConfigView::refresh);
    refresh();
}

ProgressBarConfig ProgressBarConfigView::config() const {
    const auto& preset = streamManager_.currentPreset();
    return preset && preset->progressBar ? *preset->progressBar : ProgressBarConfig{};
}

void ProgressBarConfigView::saveConfiguration(const ProgressBarConfig& config) {
    const auto& current = streamManager_.currentPreset();
    if (!current) return;
    Preset copy = *current;
    copy.progressBar = config;
    streamManager_.setCurrentPreset(copy);
    // The overlay rebuilds on this, also where no scene changed.
    streamManager_.setProgressBarUpdateTimestamp(QDateTime::currentDateTimeUtc());
    streamManager_.presetStorage().savePreset(copy);
}

void ProgressBarConfigView::edit(const std::function<void(ProgressBarConfig&)>& change) {
    if (!streamManager_.currentPreset()) return;
    ProgressBarConfig c = config();
    change(c);
    saveConfiguration(c);
}

void ProgressBarConfigView::addStep(const QString& title) {
    const std::string text = title.trimmed().toStdString();
    if (text.empty()) return;
    edit([&text](ProgressBarConfig& c) { ProgressStepEditor::addStep(c, text); });
}

void ProgressBarConfigView::deleteStep(const Uuid& id) {
    ProgressBarConfig c = config();
    if (!ProgressStepEditor::deleteStep(c, id)) return;
    saveConfiguration(c);
}

void ProgressBarConfigView::moveStepUp(const Uuid& id) {
    ProgressBarConfig c = config();
    if (!ProgressStepEditor::moveStepUp(c, id)) return;
    saveConfiguration(c);
}

void ProgressBarConfigView::moveStepDown(const Uuid& id) {
    ProgressBarConfig c = config();
    if (!ProgressStepEditor::moveStepDown(c, id)) return;
    saveConfiguration(c);
}

void ProgressBarConfigView::toggleStep(const Uuid& id) {
    ProgressBarConfig c = config();
    const auto done = ProgressStepEditor::toggleStep(c, id);
    if (!done) return;
    for (const ProgressStep& step : c.steps)
        if (step.id == id)
            logLine("✅ Progress step toggled: " + step.title + " = " + (*done ? "true" : "false"));
    saveConfiguration(c);
}

AddStepView* ProgressBarConfigView::showAddStep() {
    auto* sheet = new AddStepView(this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &AddStepView::stepAdded, this, &ProgressBarConfigView::addStep);
    sheet->open();
    return sheet;
}

void ProgressBarConfigView::refresh() {
    const ProgressBarConfig c = config();
    const bool present = streamManager_.currentPreset().has_value();
    setEnabled(present);
    enabled_->setOn(c.enabled);
    rebuildRows(c);
    const bool horizontal = c.orientation == ProgressBarOrientation::horizontal;
    horizontal_->setChecked(horizontal);
    vertical_->setChecked(!horizontal);
    // The overlay reads any position that is not its own first edge as the
    // second one, and so does the choice here.
    const QString first = horizontal ? QStringLiteral("Top") : QStringLiteral("Left");
    const QString second = horizontal ? QStringLiteral("Bottom") : QStringLiteral("Right");
    firstPosition_->setText(first);
    firstPosition_->setAccessibleName(first);
    secondPosition_->setText(second);
    secondPosition_->setAccessibleName(second);
    const bool atFirst = c.position == (horizontal ? ProgressBarPosition::top : ProgressBarPosition::left);
    firstPosition_->setChecked(atFirst);
    secondPosition_->setChecked(!atFirst);
    size_->setValue(c.size);
    opacity_->setValue(c.opacity);
    completed_->setColor(c.completedColor);
    pending_->setColor(c.pendingColor);
    text_->setColor(c.textColor);
    textSize_->setValue(c.textSize);
}

void ProgressBarConfigView::rebuildRows(const ProgressBarConfig& config) {
    const std::vector<ProgressStep> sorted = ProgressStepEditor::sortedByOrder(config);
    empty_->setVisible(sorted.empty());
    if (sorted == shownSteps_ && rows_.size() == sorted.size()) return;
    shownSteps_ = sorted;
    // A row may be inside its own click while this runs: hide it now and
    // let the event loop delete it.
    for (StepRowView* row : rows_) {
        rowsColumn_->removeWidget(row);
        row->hide();
        row->deleteLater();
    }
    rows_.clear();
    for (const ProgressStep& step : sorted) {
        auto* row = new StepRowView(step);
        connect(row, &StepRowView::toggleRequested, this, &ProgressBarConfigView::toggleStep);
        connect(row, &StepRowView::moveUpRequested, this, &ProgressBarConfigView::moveStepUp);
        connect(row, &StepRowView::moveDownRequested, this, &ProgressBarConfigView::moveStepDown);
        connect(row, &StepRowView::deleteRequested, this, &ProgressBarConfigView::deleteStep);
        rowsColumn_->addWidget(row);
        rows_.push_back(row);
    }
}

}  // namespace orvane
