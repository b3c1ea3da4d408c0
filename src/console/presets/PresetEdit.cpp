#include "console/presets/PresetEdit.h"

#include "document/PresetStorage.h"
#include "engine/StreamManager.h"

namespace orvane {

void editCurrentPreset(StreamManager& streamManager, const std::function<void(Preset&)>& edit) {
    const auto& current = streamManager.currentPreset();
    if (!current) return;
    Preset copy = *current;
    edit(copy);
    streamManager.setCurrentPreset(copy);
    streamManager.presetStorage().savePreset(copy);
}

}  // namespace orvane
