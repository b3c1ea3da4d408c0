#pragma once

namespace orvane {

// The slow breathing zoom of a composition, as a function of time. While on,
// the factor swings between 1.0 and 1.1 with an ease-in-out curve, 8 seconds
// each way; turned off, it eases back to 1.0 over 8 seconds from wherever it
// stood.
class CinematicZoom {
public:
    static constexpr double kHalfPeriod = 8.0;  // seconds, one way
    static constexpr double kMaxScale = 1.1;

    // Follows the scene's flag; a change of value at `now` starts the matching
    // motion. The first call decides the starting state.
    void setEnabled(bool enabled, double now);
    // Starts again from 1.0, as a rebuilt composition does.
    void restart(double now);

    double scaleAt(double now) const;
    bool isEnabled() const { return enabled_; }

private:
    bool initialised_ = false;
    bool enabled_ = false;
    double since_ = 0;        // when the current motion began
    double returnFrom_ = 1;   // the factor when the zoom was turned off
};

}  // namespace orvane
