#pragma once

#include <functional>
#include <string>
#include <vector>

namespace orvane::test {

// Runs a function in a child process made by fork(), with the child's
// standard output (where log lines go) in a pipe that the parent reads
// whole. For faults that must not touch the test process itself: a lower
// file size limit, another user. The function's return value is the
// child's exit code; the child never returns into the test.
class ForkedChild {
public:
    struct Outcome {
        bool exited = false;     // false: killed by a signal, or fork failed
        int exitCode = -1;
        int signal = 0;
        std::vector<std::string> lines;  // everything the child wrote to stdout
    };

    static Outcome run(const std::function<int()>& body);

    // Drops this process to the unprivileged user "nobody" (and its group)
    // when it runs as root; a process that is not root stays as it is.
    // Empty on success, else why not.
    static std::string dropRootPrivileges();
    // The user and group ids that dropRootPrivileges() takes on; the
    // current ones when not root.
    static unsigned unprivilegedUid();
    static unsigned unprivilegedGid();
};

}  // namespace orvane::test
