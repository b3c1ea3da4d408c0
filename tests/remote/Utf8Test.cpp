#include <gtest/gtest.h>

#include <string>

#include "remote/Utf8.h"

using orvane::isValidUtf8;

TEST(Utf8, AcceptsWellFormedText) {
    for (const std::string text : {"", "GET / HTTP/1.1\r\n", "Café", "🔴 Go Live", "\xef\xbf\xbf", "\xf4\x8f\xbf\xbf"})
        EXPECT_TRUE(isValidUtf8(text)) << text;
}

TEST(Utf8, RefusesMalformedText) {
    const std::string cases[] = {
        "\xff",              // never a lead byte
        "\x80",              // a lone continuation
        "\xc3\x28",          // a lead without its continuation
        "\xc0\xaf",          // overlong "/"
        "\xe0\x80\xaf",      // overlong, three bytes
        "\xed\xa0\x80",      // a surrogate
        "\xf4\x90\x80\x80",  // above U+10FFFF
        "\xe2\x82",          // cut short at the end
        "\xf8\x88\x80\x80\x80",
    };
    for (const auto& text : cases) EXPECT_FALSE(isValidUtf8(text)) << testing::PrintToString(text);
}

TEST(Utf8, FindsTheBadByteWhereverItStands) {
    // ASCII before and after, so that the byte falls at every place of a
    // word and in the tail.
    for (std::size_t at = 0; at < 24; ++at) {
        std::string text(at, 'a');
        EXPECT_TRUE(isValidUtf8(text + "\xc3\xa9" + std::string(24 - at, 'b'))) << at;
        EXPECT_FALSE(isValidUtf8(text + "\xff" + std::string(24 - at, 'b'))) << at;
        EXPECT_FALSE(isValidUtf8(text + "\xc3" + std::string(24 - at, 'b'))) << at;
        EXPECT_FALSE(isValidUtf8(text + "\xe2\x82")) << at;
    }
}
