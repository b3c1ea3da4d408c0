#include <gtest/gtest.h>

#include "remote/QRCodeURL.h"
#include "remote/RemoteAccess.h"

using orvane::parsePortText;
using orvane::remoteAccessUrl;

TEST(RemoteAccess, UrlHasNoTrailingSlash) {
    EXPECT_EQ(remoteAccessUrl("192.168.1.20", 8999), "http://192.168.1.20:8999");
    EXPECT_EQ(remoteAccessUrl("localhost", 80), "http://localhost:80");
}

TEST(RemoteAccess, PortTextMustFitSixteenBits) {
    EXPECT_EQ(parsePortText("8999"), 8999);
    EXPECT_EQ(parsePortText("0"), 0);
    EXPECT_EQ(parsePortText("65535"), 65535);
    EXPECT_EQ(parsePortText("+8080"), 8080);
    for (const char* bad : {"70000", "65536", "abc", "", " 8999", "8999 ", "-1", "89a9", "+", "99999999999999"})
        EXPECT_FALSE(parsePortText(bad)) << bad;
}

TEST(RemoteAccess, ShowingTheQrCodeLogsTheUrlAndItsParts) {
    testing::internal::CaptureStdout();
    const auto first = orvane::QRCodeURL::forServer("192.168.1.20", 8999);
    const auto second = orvane::QRCodeURL::forServer("192.168.1.20", 8999);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "🔍 WebServer localIP: '192.168.1.20'\n"
              "🔍 WebServer serverPort: '8999'\n"
              "🔍 Generated URL: 'http://192.168.1.20:8999'\n"
              "🔍 WebServer localIP: '192.168.1.20'\n"
              "🔍 WebServer serverPort: '8999'\n"
              "🔍 Generated URL: 'http://192.168.1.20:8999'\n");
    EXPECT_EQ(first.url, "http://192.168.1.20:8999");
    EXPECT_EQ(first.url, second.url);
    EXPECT_NE(first.id, second.id);  // a new showing each time
}
