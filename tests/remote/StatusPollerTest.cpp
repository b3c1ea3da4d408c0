#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <string>

#include "remote/LocalAddress.h"
#include "remote/RemoteServerStatusPoller.h"
#include "remote/WebServerManager.h"
#include "support/TestApp.h"

using namespace orvane;
using namespace orvane::test;

namespace status_poller_test {

int countOf(const std::string& text, const std::string& part) {
    int n = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++n;
    return n;
}

struct Settled {
    explicit Settled(RemoteServerStatusPoller& poller) {
        QObject::connect(&poller, &RemoteServerStatusPoller::statusSettled, [this](int n) { checks = n; });
    }
    int checks = 0;
};


TEST(StatusPoller, EnablingFollowsTheServerUntilItRuns) {
    ensureApp();
    WebServerManager manager;
    manager.setServerPort(0);
    RemoteServerStatusPoller poller(&manager);
    Settled settled(poller);
    const bool hasLan = selectLocalAddress(listInterfaceAddresses()) != "localhost";

    testing::internal::CaptureStdout();
    poller.setServerEnabled(true);
    EXPECT_TRUE(poller.localServerRunning());  // at once, before any check
    ASSERT_TRUE(waitUntil([&] { return settled.checks > 0; }, 4000));
    const std::string out = testing::internal::GetCapturedStdout();

    EXPECT_TRUE(manager.isServerRunning());
    EXPECT_TRUE(poller.localServerRunning());
    EXPECT_NE(out.find("🔍 Check attempt 1: serverRunning="), std::string::npos) << out;
    if (hasLan) {
        EXPECT_NE(out.find("✅ Server fully active with IP\n"), std::string::npos) << out;
        EXPECT_NE(out.find("serverRunning=true, hasLocalIP=true, localIP='" + manager.localIP().toStdString() + "'\n"),
                  std::string::npos)
            << out;
        EXPECT_LE(settled.checks, 11);
    } else {
        EXPECT_EQ(settled.checks, 11);
        EXPECT_NE(out.find("⚠️ Timeout - syncing with real state: true\n"), std::string::npos) << out;
    }
}

TEST(StatusPoller, DisablingARunningServerSettlesBySecondCheck) {
    ensureApp();
    WebServerManager manager;
    manager.setServerPort(0);
    manager.startServer();
    ASSERT_TRUE(waitUntil([&] { return manager.isServerRunning(); }));
    RemoteServerStatusPoller poller(&manager);
    poller.syncWithServer();
    EXPECT_TRUE(poller.localServerRunning());
    Settled settled(poller);

    testing::internal::CaptureStdout();
    poller.setServerEnabled(false);
    EXPECT_FALSE(poller.localServerRunning());
    ASSERT_TRUE(waitUntil([&] { return settled.checks > 0; }, 3000));
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_LE(settled.checks, 2);
    EXPECT_NE(out.find("✅ Server fully inactive\n"), std::string::npos) << out;
    EXPECT_FALSE(manager.isServerRunning());
}

TEST(StatusPoller, WithoutAServerItTimesOutAfterElevenChecks) {
    ensureApp();
    RemoteServerStatusPoller poller(nullptr);
    Settled settled(poller);
    QElapsedTimer clock;
    clock.start();
    testing::internal::CaptureStdout();
    poller.setServerEnabled(true);
    ASSERT_TRUE(waitUntil([&] { return settled.checks > 0; }, 5000));
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(settled.checks, 11);
    EXPECT_GE(clock.elapsed(), 11 * 200);
    EXPECT_FALSE(poller.localServerRunning());
    EXPECT_EQ(countOf(out, ": serverRunning=false, hasLocalIP=false, localIP='nil'\n"), 11) << out;
    EXPECT_NE(out.find("🔍 Check attempt 11: "), std::string::npos);
    EXPECT_EQ(out.find("🔍 Check attempt 12: "), std::string::npos);
    EXPECT_NE(out.find("⚠️ Timeout - syncing with real state: false\n"), std::string::npos) << out;
}

TEST(StatusPoller, SyncTakesTheFlagWithoutPolling) {
    ensureApp();
    RemoteServerStatusPoller orphan(nullptr);
    orphan.syncWithServer();
    EXPECT_FALSE(orphan.localServerRunning());
}

}  // namespace status_poller_test
