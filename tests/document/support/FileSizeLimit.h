#pragma once

#include <sys/resource.h>

#include <csignal>
#include <cstddef>

namespace orvane::test {

// Lowers the soft limit on the size of files this process writes, so a write
// past it fails with EFBIG, the way a full disk fails part-way. Works for
// root too, which permission bits do not stop. SIGXFSZ is ignored meanwhile
// so the write returns an error instead of ending the process.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::size_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit previous_{};
    struct sigaction previousAction_ {};
};

}  // namespace orvane::test
