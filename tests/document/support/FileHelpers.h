#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace orvane::test {

std::string readBytes(const std::filesystem::path& path);  // throws if unreadable
void writeBytes(const std::filesystem::path& path, const std::string& data);
std::set<std::string> entryNames(const std::filesystem::path& directory);  // empty if unreadable

// True when this process can create a file in `directory` despite its
// permission bits (as root can).
bool canCreateFileIn(const std::filesystem::path& directory);

}  // namespace orvane::test
