#pragma once

#include <string>

namespace orvane::test {

// Captures what is written to standard output, where log lines go, from
// construction until text() is first called or the object goes.
class StdoutCapture {
public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    // Stops capturing (once) and returns everything written meanwhile.
    std::string text();

private:
    bool done_ = false;
    std::string text_;
};

}  // namespace orvane::test
