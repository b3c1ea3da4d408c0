#pragma once

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace orvane {

// Gives each RandR monitor of one listing an id of its own that a saved
// scene can find again after the program or the X server restarts.
//
// A monitor that no other monitor of the listing shares its first output
// with keeps that output's id, so "id = the RandR output id" holds in the
// simple case and ids stored that way stay valid. Monitors that share an
// output (a wide screen split in two) or have none take an id from their
// name, which the user chose and which outlives the server, unlike the
// name's atom: a 31-bit FNV-1a hash with the top bit set. No XID has that
// bit, so a name id never meets an output id. Should two names hash alike,
// the names are taken in byte order and a later one moves to the next free
// value, so the same monitors always get the same ids, whatever order the
// server lists them in.
class X11MonitorIds {
public:
    struct Monitor {
        QByteArray name;                     // the monitor's name, as its atom reads
        std::vector<std::uint32_t> outputs;  // RandR output ids, as listed
    };

    static constexpr std::uint32_t kNameIdBit = 0x80000000u;

    // One id for each monitor, in the order given; never two alike.
    static std::vector<std::uint32_t> assign(const std::vector<Monitor>& monitors);

    // The id a name would get before any collision is resolved.
    static std::uint32_t nameId(const QByteArray& name);
};

}  // namespace orvane
