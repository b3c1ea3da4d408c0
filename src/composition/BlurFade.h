#pragma once

namespace orvane {

// The blur strength of captured sources over time: a change of whether blur
// applies eases over 0.3 seconds from the current strength.
class BlurFade {
public:
    static constexpr double kDuration = 0.3;  // seconds
    static constexpr double kRadius = 20;     // canvas points at full strength

    void setActive(bool active, double now);
    // 0 (sharp) to 1 (full blur).
    double amountAt(double now) const;
    double radiusAt(double now) const { return kRadius * amountAt(now); }

private:
    bool initialised_ = false;
    bool active_ = false;
    double since_ = 0;
    double from_ = 0;
};

}  // namespace orvane
