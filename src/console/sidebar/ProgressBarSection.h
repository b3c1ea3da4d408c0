#pragma once

#include <QWidget>
#include <vector>

#include "document/Uuid.h"

class QLabel;
class QVBoxLayout;

namespace orvane {

class ProgressBarConfigView;
class SymbolButton;
class StreamManager;
class ToggleSwitch;

// The preset tab's progress bar block: its switch, the steps in order to
// tick off live, and the gear that opens the full configuration sheet.
// Writes go into the current preset and are saved; a ticked step also tells
// the overlay to redraw.
class ProgressBarSection : public QWidget {
    Q_OBJECT

public:
    explicit ProgressBarSection(StreamManager& streamManager, QWidget* parent = nullptr);

    // Creates the configuration with its defaults when the preset has none.
    void updatePresetProgressBar(bool enabled);
    void toggleStepCompletion(const Uuid& id);
    ProgressBarConfigView* showProgressBarConfig();

    SymbolButton* configureButton() const { return gear_; }
    ToggleSwitch* enabledSwitch() const { return enabled_; }
    QLabel* stepsCaption() const { return stepsCaption_; }
    // One button a step, in the steps' `order`.
    const std::vector<SymbolButton*>& stepButtons() const { return stepButtons_; }

private:
    void refresh();

    StreamManager& streamManager_;
    SymbolButton* gear_ = nullptr;
    ToggleSwitch* enabled_ = nullptr;
    QWidget* details_ = nullptr;
    QLabel* stepsCaption_ = nullptr;
    QVBoxLayout* stepsColumn_ = nullptr;
    std::vector<SymbolButton*> stepButtons_;
    std::vector<Uuid> shownIds_;
};

}  // namespace orvane
