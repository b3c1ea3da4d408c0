#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sstream>

#include "document/DocumentCodec.h"
#include "document/PresetTemplates.h"
#include "engine/StreamManager.h"

namespace orvane::test {

TestHome::TestHome() {
    if (qEnvironmentVariableIsSet("XDG_DATA_HOME")) previousDataHome_ = qgetenv("XDG_DATA_HOME");
    const QString dataHome = directory_.filePath(QStringLiteral("data"));
    qputenv("XDG_DATA_HOME", dataHome.toUtf8());
    storage_ = std::make_unique<PresetStorage>(PresetStorage::defaultBase());
    settingsPath_ = directory_.filePath(QStringLiteral("settings.ini"));
}

TestHome::~TestHome() {
    if (previousDataHome_)
        qputenv("XDG_DATA_HOME", *previousDataHome_);
    else
        qunsetenv("XDG_DATA_HOME");
}

std::unique_ptr<QSettings> TestHome::settings() const {
    return std::make_unique<QSettings>(settingsPath_, QSettings::IniFormat);
}

QString TestHome::settingsValue(const QString& key) const { return settings()->value(key).toString(); }

void TestHome::setSettingsValue(const QString& key, const QString& value) const {
    auto s = settings();
    s->setValue(key, value);
    s->sync();
}

void TestHome::savePreset(const Preset& preset, int secondsAgo) {
    storage_->savePreset(preset);
    const auto file = storage_->fileFor(preset);
    ASSERT_TRUE(std::filesystem::exists(file));
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() -
                                               std::chrono::seconds(secondsAgo));
}

std::vector<std::string> TestHome::presetFileNames() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(storage_->presetsDirectory()))
        names.push_back(entry.path().filename().string());
    return names;
}

std::optional<Preset> TestHome::readPresetFile(const Preset& preset) const {
    std::ifstream in(storage_->fileFor(preset));
    if (!in) return std::nullopt;
    std::ostringstream text;
    text << in.rdbuf();
    auto decoded = decodePreset(text.str());
    return decoded.value;
}

std::filesystem::file_time_type TestHome::modificationTime(const Preset& preset) const {
    return std::filesystem::last_write_time(storage_->fileFor(preset));
}

std::unique_ptr<StreamManager> TestHome::startSession() {
    return std::make_unique<StreamManager>(*storage_, settings());
}

Preset presetWithScenes(const std::string& name, const std::vector<std::string>& sceneNames) {
    Preset preset;
    preset.name = name;
    for (const auto& sceneName : sceneNames) preset.scenes.push_back(makeScene(sceneName));
    if (!preset.scenes.empty()) preset.activeSceneId = preset.scenes.front().id;
    return preset;
}

}  // namespace orvane::test
