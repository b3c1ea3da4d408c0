// Reads every preset file in a directory with the application's own codec
// and names each one that no longer loads, or that is not named after the
// preset it holds. Exits 0 only when every file loads.
//   monkey_preset_check <presets directory> [minimum number of files]
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "document/DocumentCodec.h"

namespace fs = std::filesystem;

int main(int argc, char* argv[]) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: " << argv[0] << " <presets directory> [minimum number of files]\n";
        return 2;
    }
    const fs::path directory = argv[1];
    const long minimum = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 0;

    std::error_code ec;
    std::vector<fs::path> files;
    for (fs::directory_iterator it(directory, ec); !ec && it != fs::directory_iterator(); it.increment(ec))
        if (it->path().extension() == ".json") files.push_back(it->path());
    if (ec) {
        std::cerr << "FAIL " << directory.string() << ": " << ec.message() << "\n";
        return 1;
    }
    std::sort(files.begin(), files.end());

    int failures = 0;
    for (const auto& file : files) {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        if (!in && !in.eof()) {
            std::cerr << "FAIL " << file.filename().string() << ": unreadable\n";
            ++failures;
            continue;
        }
        const auto decoded = orvane::decodePreset(text.str());
        if (!decoded) {
            std::cerr << "FAIL " << file.filename().string() << ": " << decoded.error << "\n";
            ++failures;
            continue;
        }
        const std::string expected = decoded.value->id.toString() + ".json";
        if (file.filename().string() != expected) {
            std::cerr << "FAIL " << file.filename().string() << ": holds the preset " << expected << "\n";
            ++failures;
            continue;
        }
        std::cout << "ok " << file.filename().string() << " \"" << decoded.value->name << "\" "
                  << decoded.value->scenes.size() << " scenes\n";
    }
    if (static_cast<long>(files.size()) < minimum) {
        std::cerr << "FAIL " << directory.string() << ": " << files.size() << " preset files, expected at least "
                  << minimum << "\n";
        ++failures;
    }
    std::cout << files.size() << " preset files, " << failures << " failed\n";
    return failures == 0 ? 0 : 1;
}
