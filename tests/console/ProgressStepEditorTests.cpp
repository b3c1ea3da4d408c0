#include <gtest/gtest.h>

#include "console/sidebar/ProgressStepEditor.h"

namespace orvane {
namespace progress_step_editor_tests {

ProgressBarConfig threeSteps() {
    ProgressBarConfig c;
    ProgressStepEditor::addStep(c, "Intro");
    ProgressStepEditor::addStep(c, "Demo");
    ProgressStepEditor::addStep(c, "Questions");
    return c;
}

std::vector<std::string> titlesInOrder(const ProgressBarConfig& c) {
    std::vector<std::string> titles;
    for (const ProgressStep& s : ProgressStepEditor::sortedByOrder(c)) titles.push_back(s.title);
    return titles;
}

std::vector<std::string> titlesInArray(const ProgressBarConfig& c) {
    std::vector<std::string> titles;
    for (const ProgressStep& s : c.steps) titles.push_back(s.title);
    return titles;
}

TEST(ProgressStepEditor, AddedStepsArePendingAndNumberedByTheCountBefore) {
    ProgressBarConfig c = threeSteps();
    ASSERT_EQ(c.steps.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(c.steps[i].order, i);
        EXPECT_FALSE(c.steps[i].isCompleted);
    }
    EXPECT_NE(c.steps[0].id, c.steps[1].id);
    // After a deletion the count, not the largest order, numbers the next.
    c.steps[2].order = 7;
    const ProgressStep& added = ProgressStepEditor::addStep(c, "Thanks");
    EXPECT_EQ(added.order, 3);
    EXPECT_EQ(added.title, "Thanks");
}

TEST(ProgressStepEditor, AStepMovedUpTwiceFromTheSecondPlaceStopsAtTheFirst) {
    ProgressBarConfig c = threeSteps();
    const Uuid demo = c.steps[1].id;
    EXPECT_TRUE(ProgressStepEditor::moveStepUp(c, demo));
    EXPECT_EQ(titlesInOrder(c), (std::vector<std::string>{"Demo", "Intro", "Questions"}));
    EXPECT_FALSE(ProgressStepEditor::moveStepUp(c, demo));
    EXPECT_EQ(titlesInOrder(c), (std::vector<std::string>{"Demo", "Intro", "Questions"}));
    EXPECT_EQ(c.steps[1].order, 0);
}

TEST(ProgressStepEditor, MovingSwapsTwoOrdersAndLeavesTheArrayAlone) {
    ProgressBarConfig c = threeSteps();
    EXPECT_TRUE(ProgressStepEditor::moveStepDown(c, c.steps[0].id));
    EXPECT_EQ(titlesInArray(c), (std::vector<std::string>{"Intro", "Demo", "Questions"}));
    EXPECT_EQ(c.steps[0].order, 1);
    EXPECT_EQ(c.steps[1].order, 0);
    EXPECT_EQ(c.steps[2].order, 2);
    EXPECT_EQ(titlesInOrder(c), (std::vector<std::string>{"Demo", "Intro", "Questions"}));
    // The last by order cannot go further down.
    EXPECT_FALSE(ProgressStepEditor::moveStepDown(c, c.steps[2].id));
    EXPECT_FALSE(ProgressStepEditor::moveStepDown(c, Uuid::generate()));
}

TEST(ProgressStepEditor, AStepFirstInTheArrayButSecondByOrderCannotMoveUp) {
    ProgressBarConfig c = threeSteps();
    c.steps[0].order = 1;
    c.steps[1].order = 0;
    EXPECT_FALSE(ProgressStepEditor::moveStepUp(c, c.steps[0].id));
    EXPECT_EQ(c.steps[0].order, 1);
    EXPECT_EQ(c.steps[1].order, 0);
    // It can still move down, and the one after it in the list can move up.
    EXPECT_TRUE(ProgressStepEditor::moveStepUp(c, c.steps[2].id));
    EXPECT_EQ(titlesInOrder(c), (std::vector<std::string>{"Demo", "Questions", "Intro"}));
}

TEST(ProgressStepEditor, DeletingTheFirstOfThreeLeavesOrdersZeroAndOne) {
    ProgressBarConfig c = threeSteps();
    EXPECT_TRUE(ProgressStepEditor::deleteStep(c, c.steps[0].id));
    ASSERT_EQ(c.steps.size(), 2u);
    EXPECT_EQ(c.steps[0].title, "Demo");
    EXPECT_EQ(c.steps[0].order, 0);
    EXPECT_EQ(c.steps[1].order, 1);
    EXPECT_FALSE(ProgressStepEditor::deleteStep(c, Uuid::generate()));
    EXPECT_EQ(c.steps.size(), 2u);
}

TEST(ProgressStepEditor, DeletingRenumbersByArrayPlaceNotByOrder) {
    ProgressBarConfig c = threeSteps();
    c.steps[0].order = 2;
    c.steps[2].order = 0;
    EXPECT_TRUE(ProgressStepEditor::deleteStep(c, c.steps[1].id));
    EXPECT_EQ(titlesInOrder(c), (std::vector<std::string>{"Intro", "Questions"}));
}

TEST(ProgressStepEditor, TogglingFlipsOneStep) {
    ProgressBarConfig c = threeSteps();
    EXPECT_EQ(ProgressStepEditor::toggleStep(c, c.steps[1].id), std::optional<bool>(true));
    EXPECT_TRUE(c.steps[1].isCompleted);
    EXPECT_FALSE(c.steps[0].isCompleted);
    EXPECT_EQ(ProgressStepEditor::toggleStep(c, c.steps[1].id), std::optional<bool>(false));
    EXPECT_FALSE(ProgressStepEditor::toggleStep(c, Uuid::generate()));
}

TEST(ProgressStepEditor, EqualOrdersKeepTheArrayArrangement) {
    ProgressBarConfig c = threeSteps();
    for (auto& s : c.steps) s.order = 4;
    EXPECT_EQ(titlesInOrder(c), (std::vector<std::string>{"Intro", "Demo", "Questions"}));
}

}  // namespace progress_step_editor_tests
}  // namespace orvane
