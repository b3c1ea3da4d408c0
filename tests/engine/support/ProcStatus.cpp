#include "support/ProcStatus.h"

#include <fstream>
#include <sstream>
#include <string>

namespace orvane::test {

std::optional<double> residentMegabytesFromStatus() {
    std::ifstream in("/proc/self/status");
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("VmRSS:", 0) != 0) continue;
        std::istringstream fields(line.substr(6));
        double kilobytes = 0;
        std::string unit;
        if (fields >> kilobytes >> unit && unit == "kB") return kilobytes / 1024.0;
    }
    return std::nullopt;
}

}  // namespace orvane::test
