#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <memory>
#include <vector>

#include "support/ExpectedResponses.h"
#include "support/RawHttpClient.h"
#include "support/ServerFixture.h"

using namespace orvane::test;
using namespace std::chrono;
using namespace std::chrono_literals;

namespace connection_limits_test {
class ConnectionLimits : public ServerFixture {};

TEST_F(ConnectionLimits, SilentConnectionIsClosedAfterFiveSeconds) {
    const auto start = steady_clock::now();
    RawConnection silent(port);
    ASSERT_TRUE(silent.connected());
    EXPECT_FALSE(silent.closedWithin(4500ms));
    EXPECT_TRUE(silent.closedWithin(1500ms));
    const auto elapsed = steady_clock::now() - start;
    EXPECT_GE(elapsed, 4900ms);
    EXPECT_LE(elapsed, 6000ms);
}

TEST_F(ConnectionLimits, SixtyFifthConnectionIsClosedAtOnce) {
    const auto start = steady_clock::now();
    std::vector<std::unique_ptr<RawConnection>> idle;
    for (int i = 0; i < 64; ++i) {
        idle.push_back(std::make_unique<RawConnection>(port));
        ASSERT_TRUE(idle.back()->connected()) << i;
    }
    // Let the server account for all 64 before the next one arrives.
    for (auto& c : idle) ASSERT_FALSE(c->closedWithin(0ms));
    std::this_thread::sleep_for(200ms);

    RawConnection extra(port);
    ASSERT_TRUE(extra.connected());  // the kernel accepts; the server closes it
    EXPECT_TRUE(extra.closedWithin(500ms));
    for (auto& c : idle) EXPECT_FALSE(c->closedWithin(0ms));

    // One client leaves: its slot is free again and a normal request is served
    // while the other 63 are still held open.
    idle.front().reset();
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(exchange(port, "GET /api/scenes/ HTTP/1.1\r\n\r\n"), kExpected404);
    EXPECT_LT(steady_clock::now() - start, 4500ms);
    for (std::size_t i = 1; i < idle.size(); ++i) EXPECT_FALSE(idle[i]->closedWithin(0ms)) << i;

    // The rest go at the idle timeout, and then the server serves again.
    for (std::size_t i = 1; i < idle.size(); ++i) {
        const auto left = duration_cast<milliseconds>(start + 6500ms - steady_clock::now());
        EXPECT_TRUE(idle[i]->closedWithin(std::max(left, 0ms))) << i;
    }
    EXPECT_GE(steady_clock::now() - start, 4800ms);
    EXPECT_EQ(exchange(port, "GET /api/status HTTP/1.1\r\n\r\n"),
              expected200(R"({"isRecording":false,"isStreaming":false,"activeScene":"Intro","programScene":"None"})"));
}

TEST_F(ConnectionLimits, AnsweredConnectionsFreeTheirSlots) {
    // Far more requests than the cap, one after another: none is refused.
    for (int i = 0; i < 200; ++i)
        ASSERT_EQ(exchange(port, "POST /api/scene/5 HTTP/1.1\r\n\r\n"),
                  expected200(R"({"error":"Invalid scene index"})"))
            << i;
}

}  // namespace connection_limits_test
