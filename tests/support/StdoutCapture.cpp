#include "support/StdoutCapture.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace orvane::test {

StdoutCapture::StdoutCapture() {
    std::fflush(stdout);
    testing::internal::CaptureStdout();
}

StdoutCapture::~StdoutCapture() { text(); }

std::string StdoutCapture::text() {
    if (!done_) {
        std::fflush(stdout);
        text_ = testing::internal::GetCapturedStdout();
        done_ = true;
    }
    return text_;
}

}  // namespace orvane::test
