#include "support/FileHelpers.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace orvane::test {

namespace fs = std::filesystem;

std::string readBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeBytes(const fs::path& path, const std::string& data) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << data;
    if (!out) throw std::runtime_error("cannot write " + path.string());
}

std::set<std::string> entryNames(const fs::path& directory) {
    std::set<std::string> names;
    std::error_code ec;
    for (auto it = fs::directory_iterator(directory, ec); !ec && it != fs::directory_iterator(); it.increment(ec))
        names.insert(it->path().filename().string());
    return names;
}

bool canCreateFileIn(const fs::path& directory) {
    // access() answers for the real user, which is who the store runs as.
    return ::access(directory.c_str(), W_OK) == 0;
}

}  // namespace orvane::test
