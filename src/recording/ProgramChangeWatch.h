#pragma once

#include <cstdint>
#include <memory>
#include <optional>

namespace orvane {

struct ProgramSnapshot;

// Decides whether a frame of the recording must be drawn anew or may repeat
// the picture drawn last: it may only when nothing that the picture is made
// of can have changed. That is the same snapshot, every live source on the
// same frame, no animation running, and less than a second since the last
// drawing (so that what no snapshot can tell, such as a logo or slide
// picture file that changes on disk, reaches the file within a second).
class ProgramChangeWatch {
public:
    struct State {
        // Held, so that a later snapshot cannot take its address.
        std::shared_ptr<const ProgramSnapshot> snapshot;
        // The sources' frame generation; none when the frame source cannot
        // tell, and then every frame is drawn.
        std::optional<std::uint64_t> frameGeneration;
        bool animating = false;
    };

    static constexpr std::int64_t kRedrawInterval = 30;  // frames

    // Whether the frame at frameIndex must be drawn, given what it would be
    // drawn from.
    bool needsDrawing(const State& state, std::int64_t frameIndex) const;
    // The frame at frameIndex was drawn from state (and handed on).
    void drawn(const State& state, std::int64_t frameIndex);

private:
    bool hasDrawn_ = false;
    State last_;
    std::int64_t lastIndex_ = 0;
};

}  // namespace orvane
