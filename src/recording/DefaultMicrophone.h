#pragma once

#include <QString>

namespace orvane {

// The microphone a recording uses when none is chosen: the sound server's
// default source, but only when it is a real input. With no microphone
// plugged in, the server falls back to the monitor of a sink as its default
// source, which carries what the machine plays; a microphone track must
// never record that.
class DefaultMicrophone {
public:
    struct Lookup {
        QString source;  // the source's name; empty: no microphone
        QString why;     // when empty: what was found instead
    };

    // Blocks for the round trips to a local server.
    static Lookup find();
};

}  // namespace orvane
