#include "recording/ProgramChangeWatch.h"

namespace orvane {

bool ProgramChangeWatch::needsDrawing(const State& state, std::int64_t frameIndex) const {
    if (!hasDrawn_ || state.animating || last_.animating) return true;
    if (!state.frameGeneration || state.frameGeneration != last_.frameGeneration) return true;
    if (state.snapshot != last_.snapshot) return true;
    return frameIndex - lastIndex_ >= kRedrawInterval;
}

void ProgramChangeWatch::drawn(const State& state, std::int64_t frameIndex) {
    hasDrawn_ = true;
    last_ = state;
    lastIndex_ = frameIndex;
}

}  // namespace orvane
