#pragma once

#include <memory>
#include <string>

#include "remote/RemoteSessionSnapshot.h"

namespace orvane {

// A snapshot together with the complete replies of the two read routes,
// serialised once when the snapshot is published instead of on every poll.
struct RemotePublishedSession {
    std::shared_ptr<const RemoteSessionSnapshot> snapshot;  // null: the session is gone
    std::string scenesResponse;                             // GET /api/scenes
    std::string statusResponse;                             // GET /api/status

    static std::shared_ptr<const RemotePublishedSession> make(std::shared_ptr<const RemoteSessionSnapshot> snapshot);
};

}  // namespace orvane
