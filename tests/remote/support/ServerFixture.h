#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "SessionDouble.h"
#include "TestApp.h"
#include "remote/WebServerManager.h"

namespace orvane::test {

// A running server on an ephemeral port with a session of three scenes.
class ServerFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ensureApp();
        manager = std::make_unique<WebServerManager>();
        manager->setServerPort(0);
        session = std::make_unique<SessionDouble>(manager.get());
        session->loadPreset({"Intro", "Talk", "Outro"});
        manager->startServer();
        ASSERT_TRUE(waitUntil([&] { return manager->isServerRunning(); }));
        port = manager->listeningPort();
        ASSERT_NE(port, 0);
    }

    void TearDown() override {
        session.reset();
        manager.reset();
    }

    std::unique_ptr<WebServerManager> manager;
    std::unique_ptr<SessionDouble> session;
    quint16 port = 0;
};

}  // namespace orvane::test
