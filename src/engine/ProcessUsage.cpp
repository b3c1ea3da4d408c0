#include "engine/ProcessUsage.h"

#include <unistd.h>

#include <charconv>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace orvane {

namespace {

std::optional<std::string> readFile(const char* path) {
    std::ifstream in(path);
    if (!in) return std::nullopt;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string_view> splitBlanks(std::string_view text) {
    std::vector<std::string_view> fields;
    std::size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && (text[i] == ' ' || text[i] == '\n' || text[i] == '\t')) ++i;
        const std::size_t start = i;
        while (i < text.size() && text[i] != ' ' && text[i] != '\n' && text[i] != '\t') ++i;
        if (i > start) fields.push_back(text.substr(start, i - start));
    }
    return fields;
}

std::optional<double> parseNumber(std::string_view field) {
    double value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (error != std::errc() || end != field.data() + field.size()) return std::nullopt;
    return value;
}

double ticksPerSecond() {
    const long ticks = sysconf(_SC_CLK_TCK);
    return ticks > 0 ? static_cast<double>(ticks) : 100.0;
}

}  // namespace

std::optional<ProcessUsage::StatTimes> ProcessUsage::parseStat(std::string_view text) {
    // The command name in parentheses may itself hold blanks and ')', so the
    // fields are counted from the last ')'. After it come field 3 (state)
    // onwards; utime and stime are fields 14 and 15, starttime field 22.
    const std::size_t close = text.rfind(')');
    if (close == std::string_view::npos) return std::nullopt;
    const auto fields = splitBlanks(text.substr(close + 1));
    constexpr std::size_t utime = 14 - 3, stime = 15 - 3, starttime = 22 - 3;
    if (fields.size() <= starttime) return std::nullopt;
    const auto user = parseNumber(fields[utime]);
    const auto system = parseNumber(fields[stime]);
    const auto start = parseNumber(fields[starttime]);
    if (!user || !system || !start) return std::nullopt;
    return StatTimes{*user + *system, *start};
}

std::optional<double> ProcessUsage::parseStatmResidentPages(std::string_view text) {
    const auto fields = splitBlanks(text);
    if (fields.size() < 2) return std::nullopt;
    return parseNumber(fields[1]);
}

std::optional<double> ProcessUsage::cpuSeconds() {
    const auto text = readFile("/proc/self/stat");
    if (!text) return std::nullopt;
    const auto times = parseStat(*text);
    if (!times) return std::nullopt;
    return times->cpuTicks / ticksPerSecond();
}

std::optional<double> ProcessUsage::ageSeconds() {
    const auto stat = readFile("/proc/self/stat");
    const auto uptime = readFile("/proc/uptime");
    if (!stat || !uptime) return std::nullopt;
    const auto times = parseStat(*stat);
    const auto fields = splitBlanks(*uptime);
    if (!times || fields.empty()) return std::nullopt;
    const auto up = parseNumber(fields[0]);
    if (!up) return std::nullopt;
    return *up - times->startTicks / ticksPerSecond();
}

std::optional<double> ProcessUsage::residentBytes() {
    const auto text = readFile("/proc/self/statm");
    if (!text) return std::nullopt;
    const auto pages = parseStatmResidentPages(*text);
    if (!pages) return std::nullopt;
    const long pageSize = sysconf(_SC_PAGESIZE);
    return *pages * static_cast<double>(pageSize > 0 ? pageSize : 4096);
}

}  // namespace orvane
