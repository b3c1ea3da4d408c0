#pragma once

#include <gtest/gtest.h>

#include <QApplication>

#include <functional>
#include <memory>

#include "support/TestDisplayServer.h"

namespace orvane::test {

// One Qt application for the test process. With a display server it is a
// widget application on a private Xvfb; without one it runs offscreen.
class QtTestEnvironment : public ::testing::Environment {
public:
    // splitMonitors: two monitors side by side, else one of 1920x1080.
    explicit QtTestEnvironment(bool withDisplayServer, bool splitMonitors = true)
        : withDisplayServer_(withDisplayServer), splitMonitors_(splitMonitors) {}
    void SetUp() override;
    void TearDown() override;

    static QtTestEnvironment* instance();
    TestDisplayServer& displayServer() { return server_; }

private:
    bool withDisplayServer_;
    bool splitMonitors_;
    TestDisplayServer server_;
    std::unique_ptr<QApplication> app_;
};

// Runs the event loop until the condition holds; false on timeout.
bool waitUntil(const std::function<bool()>& condition, int timeoutMs = 5000);

}  // namespace orvane::test
