#pragma once

#include <string>
#include <vector>

namespace orvane::test {

// Captures standard output, where log lines go, between construction and
// finish().
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    // Stops capturing (once) and returns every line.
    const std::vector<std::string>& finish();
    // The lines without those of the preset store ("📁 ", "✅ Preset saved: ").
    std::vector<std::string> sessionLines();
    // How many lines start with the prefix.
    int count(const std::string& prefix);

private:
    bool capturing_ = true;
    std::vector<std::string> lines_;
};

}  // namespace orvane::test
