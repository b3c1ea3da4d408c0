#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "capture/CaptureResult.h"
#include "support/QStringPrinter.h"

namespace orvane {
namespace capture_result_test {

// A value whose move throws when told to, so that an assignment can be
// made to fail halfway, leaving the result holding nothing.
struct FragileValue {
    static inline bool failMoves = false;
    int number = 0;
    explicit FragileValue(int n) : number(n) {}
    FragileValue(const FragileValue&) = default;
    FragileValue(FragileValue&& other) : number(other.number) {
        if (failMoves) throw std::runtime_error("move failed");
    }
    FragileValue& operator=(const FragileValue&) = default;
    FragileValue& operator=(FragileValue&&) = default;
};

TEST(CaptureResult, ValuesAndFailuresSayWhatTheyAre) {
    CaptureResult<int> value(7);
    EXPECT_TRUE(value.ok());
    EXPECT_EQ(value.value(), 7);
    EXPECT_TRUE(value.error().isEmpty());
    EXPECT_FALSE(value.wasDeclined());

    const auto failed = CaptureResult<int>::failure("device gone");
    EXPECT_FALSE(failed.ok());
    EXPECT_EQ(failed.error(), "device gone");
    EXPECT_FALSE(failed.wasDeclined());

    const auto declined = CaptureResult<int>::declined("the portal said no");
    EXPECT_FALSE(declined.ok());
    EXPECT_EQ(declined.error(), "the portal said no");
    EXPECT_TRUE(declined.wasDeclined());
}

TEST(CaptureResult, AResultLeftEmptyIsAFailureWithAMessage) {
    auto result = CaptureResult<FragileValue>::failure("not yet");
    CaptureResult<FragileValue> replacement(FragileValue(3));
    FragileValue::failMoves = true;
    EXPECT_THROW(result = std::move(replacement), std::runtime_error);
    FragileValue::failMoves = false;

    // Neither a value nor a failure now; asking must not throw.
    EXPECT_FALSE(result.ok());
    EXPECT_FALSE(static_cast<bool>(result));
    QString message;
    EXPECT_NO_THROW(message = result.error());
    EXPECT_EQ(message, "No result");
    bool declined = true;
    EXPECT_NO_THROW(declined = result.wasDeclined());
    EXPECT_FALSE(declined);
}

}  // namespace
}  // namespace orvane
