#pragma once

namespace orvane {

// How long the calling thread has run on a CPU, and how long it has waited,
// ready to run, for one: the kernel's scheduler figures. Frames drawn late
// while a thread waited long for a CPU were starved by other work on the
// machine, not held up inside the recorder. Zeros where the kernel keeps no
// such figures.
struct ThreadSchedule {
    double ran_s = 0;
    double waited_s = 0;

    static ThreadSchedule ofThisThread();
    ThreadSchedule since(const ThreadSchedule& earlier) const {
        return {ran_s - earlier.ran_s, waited_s - earlier.waited_s};
    }
};

}  // namespace orvane
