#include "console/sidebar/ProgressStepEditor.h"

#include <algorithm>

namespace orvane {

namespace {
std::vector<ProgressStep>::iterator findProgressStep(ProgressBarConfig& config, const Uuid& id) {
    return std::find_if(config.steps.begin(), config.steps.end(), [&](const ProgressStep& s) { return s.id == id; });
}

// Places in the sorted list, as indices into the steps array.
std::vector<std::size_t> progressStepsInOrder(const ProgressBarConfig& config) {
    std::vector<std::size_t> places(config.steps.size());
    for (std::size_t i = 0; i < places.size(); ++i) places[i] = i;
    std::stable_sort(places.begin(), places.end(),
                     [&](std::size_t a, std::size_t b) { return config.steps[a].order < config.steps[b].order; });
    return places;
}

// The step's place in the sorted list and in the array, or none.
std::optional<std::pair<std::size_t, std::size_t>> progressStepPlaces(const ProgressBarConfig& config,
                                                                      const std::vector<std::size_t>& sorted,
                                                                      const Uuid& id) {
    for (std::size_t i = 0; i < sorted.size(); ++i)
        if (config.steps[sorted[i]].id == id) return std::make_pair(i, sorted[i]);
    return std::nullopt;
}
}  // namespace

std::vector<ProgressStep> ProgressStepEditor::sortedByOrder(const ProgressBarConfig& config) {
    std::vector<ProgressStep> steps = config.steps;
    std::stable_sort(steps.begin(), steps.end(),
                     [](const ProgressStep& a, const ProgressStep& b) { return a.order < b.order; });
    return steps;
}

const ProgressStep& ProgressStepEditor::addStep(ProgressBarConfig& config, const std::string& title) {
    ProgressStep step;
    step.id = Uuid::generate();
    step.title = title;
    step.isCompleted = false;
    step.order = int(config.steps.size());
    config.steps.push_back(step);
    return config.steps.back();
}

bool ProgressStepEditor::deleteStep(ProgressBarConfig& config, const Uuid& id) {
    const auto it = findProgressStep(config, id);
    if (it == config.steps.end()) return false;
    config.steps.erase(it);
    for (std::size_t i = 0; i < config.steps.size(); ++i) config.steps[i].order = int(i);
    return true;
}

bool ProgressStepEditor::moveStepUp(ProgressBarConfig& config, const Uuid& id) {
    const auto sorted = progressStepsInOrder(config);
    const auto places = progressStepPlaces(config, sorted, id);
    // Both the array place and the sorted place must be at least 1.
    if (!places || places->second < 1 || places->first < 1) return false;
    std::swap(config.steps[places->second].order, config.steps[sorted[places->first - 1]].order);
    return true;
}

bool ProgressStepEditor::moveStepDown(ProgressBarConfig& config, const Uuid& id) {
    const auto sorted = progressStepsInOrder(config);
    const auto places = progressStepPlaces(config, sorted, id);
    if (!places || places->first + 1 >= sorted.size()) return false;
    std::swap(config.steps[places->second].order, config.steps[sorted[places->first + 1]].order);
    return true;
}

std::optional<bool> ProgressStepEditor::toggleStep(ProgressBarConfig& config, const Uuid& id) {
    const auto it = findProgressStep(config, id);
    if (it == config.steps.end()) return std::nullopt;
    it->isCompleted = !it->isCompleted;
    return it->isCompleted;
}

}  // namespace orvane
