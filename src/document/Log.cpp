#include "document/Log.h"

#include <cstdio>
#include <mutex>

namespace orvane {

namespace {
std::mutex logMutex;  // protects stdout against interleaved lines
}

void logLine(std::string_view line) {
    std::lock_guard lock(logMutex);
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace orvane
