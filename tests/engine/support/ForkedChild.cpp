#include "support/ForkedChild.h"

#include <grp.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace orvane::test {

namespace {

struct Ids {
    uid_t uid;
    gid_t gid;
};

Ids unprivilegedIds() {
    if (::geteuid() != 0) return {::geteuid(), ::getegid()};
    const passwd* entry = ::getpwnam("nobody");
    if (entry) return {entry->pw_uid, entry->pw_gid};
    return {65534, 65534};
}

}  // namespace

ForkedChild::Outcome ForkedChild::run(const std::function<int()>& body) {
    Outcome outcome;
    int fds[2];
    if (::pipe(fds) != 0) return outcome;
    std::fflush(stdout);
    std::fflush(stderr);
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        return outcome;
    }
    if (pid == 0) {
        ::close(fds[0]);
        ::dup2(fds[1], STDOUT_FILENO);
        ::close(fds[1]);
        int code = 99;
        try {
            code = body();
        } catch (...) {
            std::printf("child: exception\n");
        }
        std::fflush(stdout);
        std::_Exit(code);
    }
    ::close(fds[1]);
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t n = ::read(fds[0], buffer, sizeof buffer);
        if (n > 0) {
            text.append(buffer, static_cast<std::size_t>(n));
            continue;
        }
        if (n < 0 && errno == EINTR) continue;
        break;
    }
    ::close(fds[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status)) {
        outcome.exited = true;
        outcome.exitCode = WEXITSTATUS(status);
    } else if (WIFSIGNALED(status)) {
        outcome.signal = WTERMSIG(status);
    }
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) outcome.lines.push_back(line);
    return outcome;
}

std::string ForkedChild::dropRootPrivileges() {
    if (::geteuid() != 0) return {};
    const Ids ids = unprivilegedIds();
    // Supplementary groups first, while still allowed to change them.
    if (::setgroups(0, nullptr) != 0) return std::string("setgroups: ") + std::strerror(errno);
    if (::setgid(ids.gid) != 0) return std::string("setgid: ") + std::strerror(errno);
    if (::setuid(ids.uid) != 0) return std::string("setuid: ") + std::strerror(errno);
    if (::geteuid() == 0) return "still root";
    return {};
}

unsigned ForkedChild::unprivilegedUid() { return unprivilegedIds().uid; }
unsigned ForkedChild::unprivilegedGid() { return unprivilegedIds().gid; }

}  // namespace orvane::test
