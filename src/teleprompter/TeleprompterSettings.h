#pragma once

#include <optional>

#include "document/TeleprompterConfig.h"

namespace orvane {

class StreamManager;

// The teleprompter's settings are read from the open preset each time they
// are needed, so the document is the only copy.
std::optional<TeleprompterConfig> teleprompterSettings(const StreamManager* session);

// Stores settings into the open preset: assigned back to the session (which
// saves) and saved through the store as well. Nothing happens without a
// preset. Returns whether they were stored.
bool storeTeleprompterSettings(StreamManager* session, const TeleprompterConfig& settings);

}  // namespace orvane
