#pragma once

#include <string_view>

namespace orvane {

// Strict UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view bytes);

}  // namespace orvane
