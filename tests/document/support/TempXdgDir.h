#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace orvane::test {

// A fresh, empty directory that stands in for $XDG_DATA_HOME for the
// lifetime of the object. The previous value comes back on destruction and
// the directory is removed, write permissions restored first so that tests
// may leave read-only directories behind.
class TempXdgDir {
public:
    TempXdgDir();
    ~TempXdgDir();
    TempXdgDir(const TempXdgDir&) = delete;
    TempXdgDir& operator=(const TempXdgDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path base() const { return path_ / "OrvaneUI"; }  // where the store lives

private:
    std::filesystem::path path_;
    std::optional<std::string> previous_;
};

}  // namespace orvane::test
