#pragma once

#include <optional>
#include <string>

#include "remote/RemoteAction.h"

namespace orvane {

// The complete response text, and the change to post to the main thread if
// the request asked for one. The response never depends on the change.
struct RemoteReply {
    std::string response;
    std::optional<RemoteAction> action;
};

}  // namespace orvane
