#include "support/ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

extern char** environ;

namespace orvane::test {

bool ChildProcess::start(const std::vector<std::string>& argv, const std::map<std::string, std::string>& env,
                         int keepFd, const std::string& logPath) {
    std::map<std::string, std::string> merged;
    for (char** e = environ; *e; ++e) {
        const char* eq = std::strchr(*e, '=');
        if (eq) merged[std::string(static_cast<const char*>(*e), eq)] = eq + 1;
    }
    for (const auto& [k, v] : env) merged[k] = v;
    std::vector<std::string> envStrings;
    for (const auto& [k, v] : merged) envStrings.push_back(k + "=" + v);
    std::vector<char*> envp, args;
    for (auto& s : envStrings) envp.push_back(s.data());
    envp.push_back(nullptr);
    std::vector<std::string> argvCopy = argv;
    for (auto& s : argvCopy) args.push_back(s.data());
    args.push_back(nullptr);

    const pid_t pid = ::fork();
    if (pid < 0) return false;
    if (pid == 0) {
        if (keepFd >= 0) ::fcntl(keepFd, F_SETFD, 0);
        const int out = ::open(logPath.empty() ? "/dev/null" : logPath.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
        if (out >= 0) {
            ::dup2(out, 1);
            ::dup2(out, 2);
        }
        ::setpgid(0, 0);  // so that a test runner's signals do not reach it twice
        ::execvpe(args[0], args.data(), envp.data());
        ::_exit(127);
    }
    pid_ = pid;
    return true;
}

int ChildProcess::wait(int timeoutMs) {
    if (pid_ <= 0) return -1;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (true) {
        int status = 0;
        const pid_t done = ::waitpid(pid_, &status, WNOHANG);
        if (done == pid_) {
            pid_ = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
        }
        if (std::chrono::steady_clock::now() > deadline) return -1;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void ChildProcess::stop() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGTERM);
    const pid_t pid = pid_;
    if (wait(2000) == -1 && pid_ > 0) {
        ::kill(pid, SIGKILL);
        ::waitpid(pid, nullptr, 0);
        pid_ = -1;
    }
}

}  // namespace orvane::test
