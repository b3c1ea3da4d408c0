#include "recording/ThreadSchedule.h"

#include <cstdio>

namespace orvane {

ThreadSchedule ThreadSchedule::ofThisThread() {
    ThreadSchedule schedule;
    std::FILE* file = std::fopen("/proc/thread-self/schedstat", "r");
    if (!file) return schedule;
    unsigned long long ran_ns = 0;
    unsigned long long waited_ns = 0;
    if (std::fscanf(file, "%llu %llu", &ran_ns, &waited_ns) == 2) {
        schedule.ran_s = static_cast<double>(ran_ns) / 1e9;
        schedule.waited_s = static_cast<double>(waited_ns) / 1e9;
    }
    std::fclose(file);
    return schedule;
}

}  // namespace orvane
