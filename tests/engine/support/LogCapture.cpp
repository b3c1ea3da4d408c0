#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <sstream>

namespace orvane::test {

namespace {
bool startsWith(const std::string& text, const std::string& prefix) { return text.rfind(prefix, 0) == 0; }
}  // namespace

LogCapture::LogCapture() { testing::internal::CaptureStdout(); }

LogCapture::~LogCapture() { finish(); }

const std::vector<std::string>& LogCapture::finish() {
    if (capturing_) {
        capturing_ = false;
        std::istringstream text(testing::internal::GetCapturedStdout());
        for (std::string line; std::getline(text, line);) lines_.push_back(line);
    }
    return lines_;
}

std::vector<std::string> LogCapture::sessionLines() {
    std::vector<std::string> out;
    for (const auto& line : finish())
        if (!startsWith(line, "📁 ") && !startsWith(line, "✅ Preset saved: ")) out.push_back(line);
    return out;
}

int LogCapture::count(const std::string& prefix) {
    int n = 0;
    for (const auto& line : finish())
        if (startsWith(line, prefix)) ++n;
    return n;
}

}  // namespace orvane::test
