#pragma once

#include <QSettings>
#include <QTemporaryDir>
#include <memory>

#include "console/bars/WindowManager.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"

namespace orvane::test {

// The offscreen application, made once per process.
void ensureApplication();

// A session on a private preset store and settings file.
struct Session {
    QTemporaryDir dir;
    std::unique_ptr<PresetStorage> storage;
    std::unique_ptr<StreamManager> streamManager;
    WindowManager windowManager;

    Session();
    QSettings& settings() { return streamManager->settings(); }
};

// Lines written to standard output while the object lives.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    std::string text();

private:
    bool done_ = false;
    std::string text_;
};

}  // namespace orvane::test
