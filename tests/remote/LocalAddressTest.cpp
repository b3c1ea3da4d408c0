#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <vector>

#include "remote/LocalAddress.h"

using orvane::InterfaceAddress;
using orvane::selectLocalAddress;

namespace local_address_test {
InterfaceAddress v4(const char* name, const char* host) { return {name, AF_INET, std::string(host)}; }
InterfaceAddress v6(const char* name, const char* host) { return {name, AF_INET6, std::string(host)}; }
InterfaceAddress bare(const char* name) { return {name, 0, std::nullopt}; }

TEST(LocalAddress, SkipsLoopbackAndTunnelsAndTakesTheLanAddress) {
    EXPECT_EQ(selectLocalAddress({v4("lo0", "127.0.0.1"), v4("utun3", "10.9.9.9"), v4("en1", "10.1.2.3")}),
              "10.1.2.3");
}

TEST(LocalAddress, FirstPassingEntryWinsInListedOrder) {
    EXPECT_EQ(selectLocalAddress({v4("wlan0", "192.168.1.20"), v4("eth0", "192.168.1.10")}), "192.168.1.20");
    EXPECT_EQ(selectLocalAddress({v4("eth0", "192.168.1.10"), v4("wlan0", "192.168.1.20")}), "192.168.1.10");
    EXPECT_EQ(selectLocalAddress({v4("en0", "10.0.0.2"), v4("en1", "10.0.0.1")}), "10.0.0.2");
}

TEST(LocalAddress, KnowsLinuxNames) {
    EXPECT_EQ(selectLocalAddress({v4("lo", "127.0.0.1"), v4("eth0", "172.16.0.5")}), "172.16.0.5");
    EXPECT_EQ(selectLocalAddress({v4("lo", "127.0.0.1"), v4("wlp2s0", "192.168.0.7")}), "192.168.0.7");
    EXPECT_EQ(selectLocalAddress({v4("enp3s0", "192.168.0.8")}), "192.168.0.8");
    for (const char* other : {"docker0", "br-1a2b", "virbr0", "tun0", "tailscale0", "veth12", "lo"})
        EXPECT_EQ(selectLocalAddress({v4(other, "10.5.5.5")}), "localhost") << other;
}

TEST(LocalAddress, IgnoresIpv6EntriesWithoutAddressesAndLoopbackOnLan) {
    EXPECT_EQ(selectLocalAddress({v6("en0", "fe80::1%en0"), v6("wlan0", "2001:db8::5"), bare("eth0"),
                                  v4("en2", "127.0.0.2"), v4("eth1", ""), v4("wlan1", "192.168.3.3")}),
              "192.168.3.3");
    EXPECT_EQ(selectLocalAddress({InterfaceAddress{"eth0", AF_INET, std::nullopt}}), "localhost");
}

TEST(LocalAddress, NothingPassesGivesLocalhost) {
    EXPECT_EQ(selectLocalAddress({}), "localhost");
    EXPECT_EQ(selectLocalAddress({v4("lo", "127.0.0.1"), v6("eth0", "fe80::2"), bare("wlan0")}), "localhost");
}

TEST(LocalAddress, TheSystemListHasLoopback) {
    // Every Linux host lists "lo" with 127.0.0.1; it must come through as text
    // and must not be chosen.
    const auto list = orvane::listInterfaceAddresses();
    bool sawLoopback = false;
    for (const auto& entry : list)
        if (entry.family == AF_INET && entry.host == "127.0.0.1") sawLoopback = true;
    EXPECT_TRUE(sawLoopback);
    EXPECT_NE(selectLocalAddress(list).rfind("127.", 0), 0u);
}

}  // namespace local_address_test
