#pragma once

#include <optional>
#include <cstdint>
#include <string_view>

#include "remote/RemoteReply.h"
#include "remote/RemoteSessionSnapshot.h"

namespace orvane {

// The routes behind the request line. `session` is null when the session is
// gone. Each returns a complete 200 response; actions predict their result
// from the snapshot and never wait for it.
RemoteReply createScenesResponse(const RemoteSessionSnapshot* session);
RemoteReply createStatusResponse(const RemoteSessionSnapshot* session);
RemoteReply handleSceneChange(std::string_view indexText, const RemoteSessionSnapshot* session);
RemoteReply handleLiveUpdate(const RemoteSessionSnapshot* session);
RemoteReply handleRecordingToggle(const RemoteSessionSnapshot* session);
RemoteReply handleDrawingToggle(const RemoteSessionSnapshot* session);
RemoteReply handleProgressToggle(const RemoteSessionSnapshot* session);
RemoteReply handleBrandingToggle(const RemoteSessionSnapshot* session);
RemoteReply handleBlurToggle(const RemoteSessionSnapshot* session);

// A base-10 signed 64-bit integer with an optional sign, digits only.
std::optional<std::int64_t> parseSceneIndex(std::string_view text);

}  // namespace orvane
