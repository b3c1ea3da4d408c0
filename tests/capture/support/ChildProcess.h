#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace orvane::test {

// A program the tests start and later stop by its pid.
class ChildProcess {
public:
    ChildProcess() = default;
    ~ChildProcess() { stop(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // env entries are added to (or replace those of) the test's environment.
    // keepFd stays open in the child. Output goes to logPath when given.
    bool start(const std::vector<std::string>& argv, const std::map<std::string, std::string>& env = {},
               int keepFd = -1, const std::string& logPath = {});
    // SIGTERM, then SIGKILL when it does not end within two seconds.
    void stop();
    // Waits for the child to end by itself; its exit status, -1 on timeout.
    int wait(int timeoutMs);
    pid_t pid() const { return pid_; }
    bool running() const { return pid_ > 0; }

private:
    pid_t pid_ = -1;
};

}  // namespace orvane::test
