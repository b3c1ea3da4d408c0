#pragma once

#include <string>
#include <vector>

namespace orvane::test {

// Sends everything written to file descriptor 1 into a temporary file from
// construction until stop() (or destruction), so log lines can be checked
// letter for letter.
class StdoutCapture {
public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    // Restores standard output and returns what was captured. Idempotent.
    const std::string& stop();
    std::vector<std::string> lines();  // stops first

private:
    int savedFd_ = -1;
    int captureFd_ = -1;
    std::string captured_;
};

}  // namespace orvane::test
