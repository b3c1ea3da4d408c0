#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace orvane {

// Each document enumeration specialises EnumStrings with its table of stored
// strings, in the order in which the enumeration lists its cases. The stored
// string is file format and also the label that pickers show.
template <typename E>
struct EnumStrings;  // provides: static constexpr std::array<std::pair<E, std::string_view>, N> table

template <typename E>
constexpr std::string_view toString(E value) {
    for (const auto& [e, s] : EnumStrings<E>::table)
        if (e == value) return s;
    return {};
}

template <typename E>
constexpr std::optional<E> enumFromString(std::string_view text) {
    for (const auto& [e, s] : EnumStrings<E>::table)
        if (s == text) return e;
    return std::nullopt;
}

template <typename E>
constexpr auto allCases() {
    std::array<E, EnumStrings<E>::table.size()> out{};
    for (std::size_t i = 0; i < out.size(); ++i) out[i] = EnumStrings<E>::table[i].first;
    return out;
}

}  // namespace orvane
