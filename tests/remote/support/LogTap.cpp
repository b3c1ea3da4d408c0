#include "support/LogTap.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace orvane::test {

LogTap::LogTap() {
    char name[] = "/tmp/orvane-log-XXXXXX";
    file_ = ::mkstemp(name);
    if (file_ < 0) throw std::runtime_error("mkstemp failed");
    ::unlink(name);
    std::fflush(stdout);
    saved_ = ::dup(STDOUT_FILENO);
    ::dup2(file_, STDOUT_FILENO);
}

LogTap::~LogTap() { finish(); }

void LogTap::finish() {
    if (saved_ < 0) return;
    kept_ = text();
    ::dup2(saved_, STDOUT_FILENO);
    ::close(saved_);
    ::close(file_);
    saved_ = file_ = -1;
    std::fwrite(kept_.data(), 1, kept_.size(), stdout);
    std::fflush(stdout);
}

std::string LogTap::text() const {
    if (saved_ < 0) return kept_;
    std::fflush(stdout);
    std::string text;
    char buffer[4096];
    for (off_t at = 0;;) {
        const ssize_t n = ::pread(file_, buffer, sizeof buffer, at);
        if (n <= 0) break;
        text.append(buffer, static_cast<std::size_t>(n));
        at += n;
    }
    return text;
}

std::vector<std::string> LogTap::lines() const {
    std::vector<std::string> out;
    std::istringstream in(text());
    for (std::string line; std::getline(in, line);) out.push_back(line);
    return out;
}

int LogTap::count(const std::string& prefix) const { return static_cast<int>(linesStartingWith(prefix).size()); }

std::vector<std::string> LogTap::linesStartingWith(const std::string& prefix) const {
    std::vector<std::string> out;
    for (const auto& line : lines())
        if (line.rfind(prefix, 0) == 0) out.push_back(line);
    return out;
}

}  // namespace orvane::test
