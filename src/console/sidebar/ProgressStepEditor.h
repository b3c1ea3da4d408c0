#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/ProgressBarConfig.h"

namespace orvane {

// The step operations of the progress bar's panels, on a configuration
// value. The list and the overlay follow `order`; the place of a step in the
// `steps` array only matters where an operation says so.
class ProgressStepEditor {
public:
    // The steps sorted by `order`, ascending; equal orders keep the array's
    // arrangement.
    static std::vector<ProgressStep> sortedByOrder(const ProgressBarConfig& config);

    // Appends a pending step with a new id whose `order` is the count before
    // the append; returns it.
    static const ProgressStep& addStep(ProgressBarConfig& config, const std::string& title);
    // Removes the step, then numbers the remaining steps' `order` by their
    // place in the array, from 0. False when there is no such step.
    static bool deleteStep(ProgressBarConfig& config, const Uuid& id);
    // Swap `order` with the neighbour in the sorted list; the array's
    // arrangement stays. Moving up also needs the step to stand at place 1 or
    // later in the array. False when nothing moved.
    static bool moveStepUp(ProgressBarConfig& config, const Uuid& id);
    static bool moveStepDown(ProgressBarConfig& config, const Uuid& id);
    // Flips `isCompleted`; the new state, or none when there is no such step.
    static std::optional<bool> toggleStep(ProgressBarConfig& config, const Uuid& id);
};

}  // namespace orvane
