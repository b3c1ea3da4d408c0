// The remote server's port already taken by another program, on the
// loopback address alone or on every address: the start fails with the
// reason in the log and the running flag stays down; a start on a free port
// afterwards works.

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include "remote/WebServerManager.h"
#include "support/LogTap.h"
#include "support/RawHttpClient.h"
#include "support/TestApp.h"

namespace orvane {
namespace port_taken_test {

using test::LogTap;
using test::waitUntil;

// Another program's socket, bound and listening; closed with the object.
class Occupant {
public:
    // port 0: any free port.
    Occupant(const char* address, quint16 port) {
        fd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in where{};
        where.sin_family = AF_INET;
        where.sin_port = htons(port);
        ::inet_pton(AF_INET, address, &where.sin_addr);
        if (fd_ < 0 || ::bind(fd_, reinterpret_cast<sockaddr*>(&where), sizeof where) != 0 || ::listen(fd_, 4) != 0)
            return;
        socklen_t length = sizeof where;
        ::getsockname(fd_, reinterpret_cast<sockaddr*>(&where), &length);
        port_ = ntohs(where.sin_port);
    }
    ~Occupant() {
        if (fd_ >= 0) ::close(fd_);
    }
    Occupant(const Occupant&) = delete;
    Occupant& operator=(const Occupant&) = delete;

    quint16 port() const { return port_; }  // 0 when the socket could not be set up

private:
    int fd_ = -1;
    quint16 port_ = 0;
};

class PortTakenTest : public ::testing::TestWithParam<const char*> {};

TEST_P(PortTakenTest, TheStartFailsWithTheReasonAndAStartOnAFreePortWorks) {
    test::ensureApp();
    Occupant occupant(GetParam(), 0);
    ASSERT_NE(occupant.port(), 0) << "could not take a port on " << GetParam();

    WebServerManager manager;
    manager.setServerPort(occupant.port());
    ASSERT_EQ(manager.serverPort(), occupant.port());
    int runningChanges = 0;
    QObject::connect(&manager, &WebServerManager::isServerRunningChanged, [&] { ++runningChanges; });

    {
        LogTap log;
        manager.startServer();
        ASSERT_TRUE(waitUntil([&] { return log.count("❌ Failed to start web server: ") > 0; }, 10000));
        test::spinFor(200);  // nothing more comes after the failure
        log.finish();
        const auto failures = log.linesStartingWith("❌ Failed to start web server: ");
        ASSERT_EQ(failures.size(), 1u);
        EXPECT_EQ(failures[0], "❌ Failed to start web server: The bound address is already in use");
        EXPECT_EQ(log.count("🌐 Web server started"), 0);
    }
    EXPECT_FALSE(manager.isServerRunning());
    EXPECT_EQ(runningChanges, 0);
    EXPECT_EQ(manager.listeningPort(), 0);

    // The next start, on a port nobody holds, comes up and answers.
    quint16 freePort = 0;
    {
        Occupant probe("0.0.0.0", 0);
        freePort = probe.port();
    }
    ASSERT_NE(freePort, 0);
    manager.setServerPort(freePort);
    LogTap log;
    manager.startServer();
    ASSERT_TRUE(waitUntil([&] { return manager.isServerRunning(); }, 10000));
    log.finish();
    EXPECT_EQ(manager.listeningPort(), freePort);
    EXPECT_EQ(log.count("❌ Failed to start web server: "), 0);
    EXPECT_EQ(log.count("🌐 Web server started on "), 1);
    const std::string reply = test::exchange(freePort, "GET / HTTP/1.1\r\n\r\n");
    EXPECT_EQ(reply.rfind("HTTP/1.1 200 OK\r\n", 0), 0u) << reply;
    manager.stopServer();
    ASSERT_TRUE(waitUntil([&] { return !manager.isServerRunning(); }));
}

INSTANTIATE_TEST_SUITE_P(Addresses, PortTakenTest, ::testing::Values("127.0.0.1", "0.0.0.0"),
                         [](const ::testing::TestParamInfo<const char*>& info) {
                             return std::string(info.param) == "127.0.0.1" ? "Loopback" : "AllAddresses";
                         });

}  // namespace
}  // namespace orvane
