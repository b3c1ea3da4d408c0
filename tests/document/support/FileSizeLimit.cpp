#include "support/FileSizeLimit.h"

#include <stdexcept>

namespace orvane::test {

FileSizeLimit::FileSizeLimit(std::size_t bytes) {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigemptyset(&ignore.sa_mask);
    if (sigaction(SIGXFSZ, &ignore, &previousAction_) != 0) throw std::runtime_error("sigaction failed");
    if (getrlimit(RLIMIT_FSIZE, &previous_) != 0) throw std::runtime_error("getrlimit failed");
    rlimit lowered = previous_;
    lowered.rlim_cur = static_cast<rlim_t>(bytes);
    if (setrlimit(RLIMIT_FSIZE, &lowered) != 0) throw std::runtime_error("setrlimit failed");
}

FileSizeLimit::~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &previous_);
    sigaction(SIGXFSZ, &previousAction_, nullptr);
}

}  // namespace orvane::test
