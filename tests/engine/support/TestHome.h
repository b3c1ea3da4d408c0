#pragma once

#include <QByteArray>
#include <QSettings>
#include <QTemporaryDir>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document/Preset.h"
#include "document/PresetStorage.h"

namespace orvane {
class StreamManager;
}

namespace orvane::test {

// A private data home (XDG_DATA_HOME points into a temporary directory for
// the life of the object), its preset store and a temporary settings file.
class TestHome {
public:
    TestHome();
    ~TestHome();
    TestHome(const TestHome&) = delete;
    TestHome& operator=(const TestHome&) = delete;

    PresetStorage& storage() { return *storage_; }
    std::unique_ptr<QSettings> settings() const;
    QString settingsValue(const QString& key) const;
    void setSettingsValue(const QString& key, const QString& value) const;

    // Saves the preset and dates its file `secondsAgo` into the past, so
    // that the store's newest-first order is known.
    void savePreset(const Preset& preset, int secondsAgo = 0);
    std::vector<std::string> presetFileNames() const;
    std::optional<Preset> readPresetFile(const Preset& preset) const;
    std::filesystem::file_time_type modificationTime(const Preset& preset) const;

    std::unique_ptr<StreamManager> startSession();

private:
    QTemporaryDir directory_;
    std::optional<QByteArray> previousDataHome_;
    std::unique_ptr<PresetStorage> storage_;
    QString settingsPath_;
};

// A preset with scenes of these names, the first one active.
Preset presetWithScenes(const std::string& name, const std::vector<std::string>& sceneNames);

}  // namespace orvane::test
