#pragma once

#include <QSettings>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "document/PresetStorage.h"
#include "engine/StreamManager.h"
#include "support/StdoutCapture.h"
#include "teleprompter/TeleprompterManager.h"

namespace orvane::test {

// A session on a private store with one open preset, and its teleprompter.
struct TeleprompterFixture {
    QTemporaryDir dir;
    std::unique_ptr<PresetStorage> storage;
    std::unique_ptr<StreamManager> session;
    std::unique_ptr<TeleprompterManager> manager;  // goes before the session

    // With settings in the preset unless `withSettings` is false.
    explicit TeleprompterFixture(bool withSettings = true);
    ~TeleprompterFixture();

    TeleprompterConfig settings() const;
    void setSettings(const TeleprompterConfig& settings);
    // The preset as the file on disk has it.
    Preset presetOnDisk() const;
    // Emits the scroll clock's tick `count` times.
    void tick(int count);
};

using LogCapture = StdoutCapture;

}  // namespace orvane::test
