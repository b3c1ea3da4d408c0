#pragma once

#include <string>
#include <vector>

namespace orvane::test {

// Takes over standard output, where log lines go, until finish() or the
// end of its life, into a file that can be read at any moment: a test waits
// for a line to appear instead of for a fixed time. What it took is written
// to the real standard output when it lets go, so that nothing printed
// meanwhile (a failed expectation, say) goes missing.
class LogTap {
public:
    LogTap();
    ~LogTap();
    LogTap(const LogTap&) = delete;
    LogTap& operator=(const LogTap&) = delete;

    // Gives standard output back; the lines stay readable.
    void finish();
    // Everything written so far, as lines.
    std::vector<std::string> lines() const;
    // How many lines so far start with the prefix.
    int count(const std::string& prefix) const;
    // The lines so far that start with the prefix.
    std::vector<std::string> linesStartingWith(const std::string& prefix) const;

private:
    std::string text() const;

    int saved_ = -1;  // the real standard output, while tapping
    int file_ = -1;
    std::string kept_;  // what was taken, once finished
};

}  // namespace orvane::test
