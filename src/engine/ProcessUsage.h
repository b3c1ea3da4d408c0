#pragma once

#include <optional>
#include <string_view>

namespace orvane {

// Figures of this process from /proc. Each reader returns nothing when the
// file cannot be read or parsed.
class ProcessUsage {
public:
    // User plus system CPU time consumed so far, in seconds.
    static std::optional<double> cpuSeconds();
    // Seconds since the process started, on the kernel's clock.
    static std::optional<double> ageSeconds();
    // Resident set size in bytes.
    static std::optional<double> residentBytes();

    // The parsers on their own, for tests: the text of /proc/<pid>/stat and
    // /proc/<pid>/statm.
    struct StatTimes {
        double cpuTicks = 0;    // utime + stime
        double startTicks = 0;  // start time after boot
    };
    static std::optional<StatTimes> parseStat(std::string_view text);
    static std::optional<double> parseStatmResidentPages(std::string_view text);
};

}  // namespace orvane
