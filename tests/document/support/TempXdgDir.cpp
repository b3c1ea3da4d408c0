#include "support/TempXdgDir.h"

#include <cstdlib>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace orvane::test {

namespace fs = std::filesystem;

TempXdgDir::TempXdgDir() {
    std::string pattern = (fs::temp_directory_path() / "orvane-xdg-XXXXXX").string();
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    if (!::mkdtemp(buffer.data())) throw std::runtime_error("mkdtemp failed for " + pattern);
    path_ = buffer.data();
    if (const char* old = std::getenv("XDG_DATA_HOME")) previous_ = old;
    ::setenv("XDG_DATA_HOME", path_.c_str(), 1);
}

TempXdgDir::~TempXdgDir() {
    if (previous_)
        ::setenv("XDG_DATA_HOME", previous_->c_str(), 1);
    else
        ::unsetenv("XDG_DATA_HOME");

    std::error_code ec;
    for (auto it = fs::recursive_directory_iterator(path_, ec); !ec && it != fs::recursive_directory_iterator();
         it.increment(ec)) {
        if (it->is_directory(ec) && !it->is_symlink(ec))
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
    }
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(path_, ec);
}

}  // namespace orvane::test
