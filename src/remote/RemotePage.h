#pragma once

#include <string_view>

namespace orvane {

// The remote page: markup, style and script in one UTF-8 text, sent as it
// stands. It talks only to relative paths, so it needs no address or port.
std::string_view remotePageHtml();

}  // namespace orvane
