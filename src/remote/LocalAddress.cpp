#include "remote/LocalAddress.h"

#include <ifaddrs.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <memory>
#include <string_view>

namespace orvane {

namespace {

bool isLanInterfaceName(std::string_view name) {
    return name.starts_with("en") || name.starts_with("wl") || name.starts_with("eth");
}

struct IfaddrsDeleter {
    void operator()(ifaddrs* list) const { freeifaddrs(list); }
};

}  // namespace

std::string selectLocalAddress(const std::vector<InterfaceAddress>& interfaces) {
    for (const auto& entry : interfaces) {
        if (entry.family != AF_INET || !isLanInterfaceName(entry.name)) continue;
        if (!entry.host || entry.host->empty() || entry.host->starts_with("127.")) continue;
        return *entry.host;
    }
    return "localhost";
}

std::vector<InterfaceAddress> listInterfaceAddresses() {
    ifaddrs* raw = nullptr;
    if (getifaddrs(&raw) != 0) return {};
    const std::unique_ptr<ifaddrs, IfaddrsDeleter> list(raw);

    std::vector<InterfaceAddress> result;
    for (const ifaddrs* entry = raw; entry; entry = entry->ifa_next) {
        InterfaceAddress item;
        item.name = entry->ifa_name ? entry->ifa_name : "";
        if (entry->ifa_addr) {
            item.family = entry->ifa_addr->sa_family;
            if (item.family == AF_INET || item.family == AF_INET6) {
                const socklen_t length =
                    item.family == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
                char host[1025];  // NI_MAXHOST
                if (getnameinfo(entry->ifa_addr, length, host, sizeof host, nullptr, 0, NI_NUMERICHOST) == 0)
                    item.host = std::string(host);
            }
        }
        result.push_back(std::move(item));
    }
    return result;
}

}  // namespace orvane
