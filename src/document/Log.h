#pragma once

#include <string_view>

namespace orvane {

// Writes one log line to standard output: no level, no timestamp; the line
// starts with its emoji tag. Lines from several threads never interleave.
void logLine(std::string_view line);

}  // namespace orvane
