#pragma once

#include <cstddef>
#include <functional>

namespace orvane {

// Folds the hashes of several fields into one, for the records that hash
// field by field.
template <typename... T>
std::size_t hashFields(const T&... fields) {
    std::size_t seed = 0;
    ((seed ^= std::hash<T>{}(fields) + 0x9e3779b97f4a7c15ull + (seed << 6) + (seed >> 2)), ...);
    return seed;
}

}  // namespace orvane
