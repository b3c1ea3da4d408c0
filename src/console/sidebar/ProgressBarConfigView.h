#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "document/ProgressBarConfig.h"

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace orvane {

class AddStepView;
class ColorSwatchButton;
class CaptionedSlider;
class SegmentedButton;
class StepRowView;
class StreamManager;
class ToggleSwitch;

// The progress bar's sheet: the switch, the steps with their order and
// state, the strip's layout and colours. It edits the current preset's
// configuration directly: every change stores it in the preset, makes the
// preset current, tells the overlay to redraw and saves. Without a current
// preset nothing is written.
class ProgressBarConfigView : public QDialog {
    Q_OBJECT

public:
    explicit ProgressBarConfigView(StreamManager& streamManager, QWidget* parent = nullptr);

    // The preset's configuration, or the defaults when it has none.
    ProgressBarConfig config() const;
    void saveConfiguration(const ProgressBarConfig& config);

    void addStep(const QString& title);
    void deleteStep(const Uuid& id);
    void moveStepUp(const Uuid& id);
    void moveStepDown(const Uuid& id);
    void toggleStep(const Uuid& id);
    AddStepView* showAddStep();

    ToggleSwitch* enabledSwitch() const { return enabled_; }
    // The rows in the order shown, which is the steps' `order`.
    const std::vector<StepRowView*>& stepRows() const { return rows_; }
    QLabel* emptyLabel() const { return empty_; }
    QPushButton* addStepButton() const { return addStep_; }
    SegmentedButton* horizontalButton() const { return horizontal_; }
    SegmentedButton* verticalButton() const { return vertical_; }
    // "Top" or "Left", and "Bottom" or "Right", as the orientation asks.
    SegmentedButton* firstPositionButton() const { return firstPosition_; }
    SegmentedButton* secondPositionButton() const { return secondPosition_; }
    CaptionedSlider* sizeSlider() const { return size_; }
    CaptionedSlider* opacitySlider() const { return opacity_; }
    ColorSwatchButton* completedColorButton() const { return completed_; }
    ColorSwatchButton* pendingColorButton() const { return pending_; }
    ColorSwatchButton* textColorButton() const { return text_; }
    CaptionedSlider* textSizeSlider() const { return textSize_; }
    QPushButton* doneButton() const { return done_; }

private:
    void edit(const std::function<void(ProgressBarConfig&)>& change);
    void refresh();
    void rebuildRows(const ProgressBarConfig& config);

    StreamManager& streamManager_;
    ToggleSwitch* enabled_ = nullptr;
    QVBoxLayout* rowsColumn_ = nullptr;
    std::vector<StepRowView*> rows_;
    std::vector<ProgressStep> shownSteps_;
    QLabel* empty_ = nullptr;
    QPushButton* addStep_ = nullptr;
    SegmentedButton* horizontal_ = nullptr;
    SegmentedButton* vertical_ = nullptr;
    SegmentedButton* firstPosition_ = nullptr;
    SegmentedButton* secondPosition_ = nullptr;
    CaptionedSlider* size_ = nullptr;
    CaptionedSlider* opacity_ = nullptr;
    ColorSwatchButton* completed_ = nullptr;
    ColorSwatchButton* pending_ = nullptr;
    ColorSwatchButton* text_ = nullptr;
    CaptionedSlider* textSize_ = nullptr;
    QPushButton* done_ = nullptr;
};

}  // namespace orvane
