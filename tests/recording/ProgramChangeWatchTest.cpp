#include <gtest/gtest.h>

#include <QImage>

#include "capture/CapturedFrame.h"
#include "recording/LiveFrameTable.h"
#include "recording/ProgramChangeWatch.h"
#include "recording/ProgramSnapshot.h"

namespace orvane {
namespace program_change_watch_test {

using State = ProgramChangeWatch::State;

State stateWith(std::shared_ptr<const ProgramSnapshot> snapshot, std::optional<std::uint64_t> generation,
                bool animating = false) {
    State state;
    state.snapshot = std::move(snapshot);
    state.frameGeneration = generation;
    state.animating = animating;
    return state;
}

class ProgramChangeWatchTest : public ::testing::Test {
protected:
    std::shared_ptr<const ProgramSnapshot> snapshot = std::make_shared<ProgramSnapshot>();
    ProgramChangeWatch watch;
};

TEST_F(ProgramChangeWatchTest, TheFirstFrameIsAlwaysDrawn) {
    EXPECT_TRUE(watch.needsDrawing(stateWith(snapshot, 1), 0));
}

TEST_F(ProgramChangeWatchTest, AnUnchangedProgramIsNotDrawnAgain) {
    watch.drawn(stateWith(snapshot, 5), 0);
    EXPECT_FALSE(watch.needsDrawing(stateWith(snapshot, 5), 1));
    EXPECT_FALSE(watch.needsDrawing(stateWith(snapshot, 5), 29));
}

TEST_F(ProgramChangeWatchTest, ANewSourceFrameIsDrawn) {
    watch.drawn(stateWith(snapshot, 5), 0);
    EXPECT_TRUE(watch.needsDrawing(stateWith(snapshot, 6), 1));
}

TEST_F(ProgramChangeWatchTest, ANewSnapshotIsDrawn) {
    watch.drawn(stateWith(snapshot, 5), 0);
    EXPECT_TRUE(watch.needsDrawing(stateWith(std::make_shared<ProgramSnapshot>(*snapshot), 5), 1));
}

TEST_F(ProgramChangeWatchTest, AnAnimationIsDrawnThroughToItsLastFrame) {
    watch.drawn(stateWith(snapshot, 5, true), 0);
    EXPECT_TRUE(watch.needsDrawing(stateWith(snapshot, 5, true), 1));
    // The first still frame after the motion still shows where it ended.
    EXPECT_TRUE(watch.needsDrawing(stateWith(snapshot, 5, false), 2));
    watch.drawn(stateWith(snapshot, 5, false), 2);
    EXPECT_FALSE(watch.needsDrawing(stateWith(snapshot, 5, false), 3));
}

TEST_F(ProgramChangeWatchTest, SourcesThatCannotTellAreDrawnEveryFrame) {
    watch.drawn(stateWith(snapshot, std::nullopt), 0);
    EXPECT_TRUE(watch.needsDrawing(stateWith(snapshot, std::nullopt), 1));
}

TEST_F(ProgramChangeWatchTest, AStillProgramIsDrawnAfreshOnceASecond) {
    watch.drawn(stateWith(snapshot, 5), 0);
    EXPECT_FALSE(watch.needsDrawing(stateWith(snapshot, 5), ProgramChangeWatch::kRedrawInterval - 1));
    EXPECT_TRUE(watch.needsDrawing(stateWith(snapshot, 5), ProgramChangeWatch::kRedrawInterval));
}

TEST(LiveFrameTableGenerationTest, MovesWithEveryNewCaptureFrameAndEveryBinding) {
    LiveFrameTable table;
    auto sequence = std::make_shared<std::uint64_t>(1);
    const Uuid camera = Uuid::generate();
    table.bindCapture(camera, [sequence] {
        CapturedFrame frame;
        frame.image = QImage(8, 8, QImage::Format_RGB32);
        frame.sequence = *sequence;
        return frame;
    });
    const std::uint64_t first = table.generation();
    EXPECT_EQ(table.generation(), first) << "nothing new";
    *sequence = 2;
    const std::uint64_t second = table.generation();
    EXPECT_NE(second, first);
    const Uuid screen = Uuid::generate();
    table.bindFrame(screen, SourceFrame::withImage(QImage(8, 8, QImage::Format_RGB32)));
    const std::uint64_t third = table.generation();
    EXPECT_NE(third, second);
    EXPECT_EQ(table.generation(), third);
    table.unbind(screen);
    EXPECT_NE(table.generation(), third);
}

}  // namespace
}  // namespace orvane
