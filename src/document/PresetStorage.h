#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "document/Preset.h"

namespace orvane {

// The file layer: one JSON file a preset in <base>/Presets, copied logos in
// <base>/Logos. Every document write ends here. Failures are log lines; only
// the logo copy reports one to its caller.
class PresetStorage {
public:
    static constexpr const char* lastSelectedPresetKey = "last_selected_preset";

    // The application's instance, based at $XDG_DATA_HOME/OrvaneUI
    // (default ~/.local/share/OrvaneUI), created on first use.
    static PresetStorage& shared();

    // The base that shared() uses: $XDG_DATA_HOME/OrvaneUI when that is an
    // absolute path, else ~/.local/share/OrvaneUI.
    static std::filesystem::path defaultBase();

    // An instance on any base directory; creates Presets and Logos below it
    // and logs both paths.
    explicit PresetStorage(std::filesystem::path base);

    std::vector<Preset> loadPresets() const;  // newest file first
    void savePreset(const Preset& preset) const;  // atomic: never leaves a truncated file
    void deletePreset(const Preset& preset) const;
    std::optional<std::string> copyLogoToAppDirectory(const std::string& from) const;
    void deleteLogo(const std::optional<std::string>& at) const;

    const std::filesystem::path& presetsDirectory() const { return presetsDirectory_; }
    const std::filesystem::path& metadataFile() const { return metadataFile_; }  // reserved, never touched
    const std::filesystem::path& logosDirectory() const { return logosDirectory_; }
    std::filesystem::path fileFor(const Preset& preset) const;

private:
    std::filesystem::path presetsDirectory_;
    std::filesystem::path metadataFile_;
    std::filesystem::path logosDirectory_;
};

}  // namespace orvane
