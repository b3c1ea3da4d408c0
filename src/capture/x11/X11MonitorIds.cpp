#include "capture/x11/X11MonitorIds.h"

#include <algorithm>
#include <set>

namespace orvane {

std::uint32_t X11MonitorIds::nameId(const QByteArray& name) {
    std::uint32_t hash = 2166136261u;
    for (const char byte : name) {
        hash ^= static_cast<std::uint8_t>(byte);
        hash *= 16777619u;
    }
    // Folded to 31 bits: the bit dropped is mixed into the lowest.
    const std::uint32_t folded = ((hash >> 31) ^ hash) & ~kNameIdBit;
    return folded | kNameIdBit;
}

std::vector<std::uint32_t> X11MonitorIds::assign(const std::vector<Monitor>& monitors) {
    std::vector<std::uint32_t> ids(monitors.size(), 0);
    auto showsOutput = [](const Monitor& monitor, std::uint32_t output) {
        return std::find(monitor.outputs.begin(), monitor.outputs.end(), output) != monitor.outputs.end();
    };

    std::set<std::uint32_t> taken;
    std::vector<std::size_t> named;
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        const Monitor& monitor = monitors[i];
        bool alone = !monitor.outputs.empty();
        for (std::size_t j = 0; alone && j < monitors.size(); ++j)
            if (j != i && showsOutput(monitors[j], monitor.outputs.front())) alone = false;
        if (alone) {
            ids[i] = monitor.outputs.front();
            taken.insert(ids[i]);
        } else {
            named.push_back(i);
        }
    }

    // Byte order of the names (listing order between equal names): the
    // outcome does not depend on how the server happened to order them.
    std::stable_sort(named.begin(), named.end(),
                     [&](std::size_t a, std::size_t b) { return monitors[a].name < monitors[b].name; });
    for (const std::size_t i : named) {
        std::uint32_t id = nameId(monitors[i].name);
        while (taken.count(id)) id = kNameIdBit | ((id + 1) & ~kNameIdBit);
        ids[i] = id;
        taken.insert(id);
    }
    return ids;
}

}  // namespace orvane
