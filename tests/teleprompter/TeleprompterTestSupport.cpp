#include "TeleprompterTestSupport.h"

#include <QApplication>
#include <gtest/gtest.h>

#include "teleprompter/ScrollTicker.h"

namespace orvane::test {

namespace {

void ensureApplication() {
    if (qApp) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "teleprompter_tests";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
}

}  // namespace

TeleprompterFixture::TeleprompterFixture(bool withSettings) {
    ensureApplication();
    storage = std::make_unique<PresetStorage>(dir.filePath(QStringLiteral("data")).toStdString());
    session = std::make_unique<StreamManager>(
        *storage, std::make_unique<QSettings>(dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat));
    Preset preset;
    preset.name = "Talk";
    if (withSettings) {
        TeleprompterConfig settings;
        settings.enabled = true;
        settings.text = "Good morning.\nToday: three things.";
        preset.teleprompter = settings;
    }
    session->setCurrentPreset(preset);
    manager = std::make_unique<TeleprompterManager>(*session);
}

TeleprompterFixture::~TeleprompterFixture() {
    // The manager's teardown closes an open window; keep its lines out of
    // the next test's capture.
    manager.reset();
    fflush(stdout);
}

TeleprompterConfig TeleprompterFixture::settings() const { return *session->currentPreset()->teleprompter; }

void TeleprompterFixture::setSettings(const TeleprompterConfig& settings) {
    Preset preset = *session->currentPreset();
    preset.teleprompter = settings;
    session->setCurrentPreset(preset);
}

Preset TeleprompterFixture::presetOnDisk() const {
    const auto loaded = storage->loadPresets();
    for (const Preset& preset : loaded)
        if (preset.id == session->currentPreset()->id) return preset;
    ADD_FAILURE() << "the preset is not on disk";
    return {};
}

void TeleprompterFixture::tick(int count) {
    auto* ticker = manager->findChild<ScrollTicker*>();
    ASSERT_NE(ticker, nullptr);
    for (int i = 0; i < count; ++i) emit ticker->tick();
}

}  // namespace orvane::test
