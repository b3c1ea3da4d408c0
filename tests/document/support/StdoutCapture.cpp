#include "support/StdoutCapture.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace orvane::test {

StdoutCapture::StdoutCapture() {
    char name[] = "/tmp/orvane-stdout-XXXXXX";
    captureFd_ = ::mkstemp(name);
    if (captureFd_ < 0) throw std::runtime_error("mkstemp failed");
    ::unlink(name);
    std::fflush(stdout);
    savedFd_ = ::dup(STDOUT_FILENO);
    ::dup2(captureFd_, STDOUT_FILENO);
}

StdoutCapture::~StdoutCapture() { stop(); }

const std::string& StdoutCapture::stop() {
    if (savedFd_ < 0) return captured_;
    std::fflush(stdout);
    ::dup2(savedFd_, STDOUT_FILENO);
    ::close(savedFd_);
    savedFd_ = -1;

    ::lseek(captureFd_, 0, SEEK_SET);
    char buffer[4096];
    for (ssize_t n; (n = ::read(captureFd_, buffer, sizeof buffer)) > 0;)
        captured_.append(buffer, static_cast<std::size_t>(n));
    ::close(captureFd_);
    captureFd_ = -1;
    return captured_;
}

std::vector<std::string> StdoutCapture::lines() {
    const std::string& text = stop();
    std::vector<std::string> out;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        out.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return out;
}

}  // namespace orvane::test
