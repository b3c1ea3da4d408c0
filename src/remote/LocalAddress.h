#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane {

// One entry of the system's interface list, as far as address selection
// needs it. `host` is the numeric text of the address, absent when the entry
// has no address or it could not be turned into text.
struct InterfaceAddress {
    std::string name;
    int family = 0;  // AF_INET, AF_INET6, ... ; 0 without an address
    std::optional<std::string> host;
};

// The first IPv4 address of an interface named "en...", "wl..." or "eth..."
// that is neither empty nor a 127 address, in the order given; otherwise
// "localhost".
std::string selectLocalAddress(const std::vector<InterfaceAddress>& interfaces);

// The system's list, from getifaddrs, in the order it lists them. Empty when
// getifaddrs fails.
std::vector<InterfaceAddress> listInterfaceAddresses();

}  // namespace orvane
