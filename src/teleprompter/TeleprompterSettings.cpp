#include "teleprompter/TeleprompterSettings.h"

#include "document/PresetStorage.h"
#include "engine/StreamManager.h"

namespace orvane {

std::optional<TeleprompterConfig> teleprompterSettings(const StreamManager* session) {
    if (!session || !session->currentPreset()) return std::nullopt;
    return session->currentPreset()->teleprompter;
}

bool storeTeleprompterSettings(StreamManager* session, const TeleprompterConfig& settings) {
    if (!session || !session->currentPreset()) return false;
    Preset preset = *session->currentPreset();
    preset.teleprompter = settings;
    session->setCurrentPreset(preset);
    session->presetStorage().savePreset(preset);
    return true;
}

}  // namespace orvane
