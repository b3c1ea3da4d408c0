// The page in headless Chromium against the real session object, joined to
// the server by the bridge.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QSettings>
#include <QTemporaryDir>
#include <memory>

#include "document/Preset.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"
#include "remote/WebServerManager.h"
#include "remote/session/StreamManagerRemoteBridge.h"
#include "support/PageDriver.h"
#include "support/TestApp.h"

using namespace orvane;
using namespace orvane::test;

TEST(SessionPageBrowser, TapsAndKeysDriveTheSessionObject) {
    ensureApp();
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    PresetStorage storage(dir.filePath("data").toStdString());
    Preset preset;
    preset.name = "Show";
    for (const char* name : {"Intro", "Talk", "Outro"}) {
        StreamingScene scene;
        scene.name = name;
        preset.scenes.push_back(scene);
    }
    preset.activeSceneId = preset.scenes.front().id;
    preset.sceneTransition.enabled = false;
    storage.savePreset(preset);
    StreamManager session(storage, std::make_unique<QSettings>(dir.filePath("settings.ini"), QSettings::IniFormat));

    auto server = std::make_unique<WebServerManager>();
    server->setServerPort(0);
    new StreamManagerRemoteBridge(&session, server.get(), server.get());
    server->startServer();
    ASSERT_TRUE(waitUntil([&] { return server->isServerRunning(); }));

    PageDriver driver;
    ASSERT_TRUE(driver.ready()) << driver.lastError().toStdString();
    ASSERT_TRUE(driver.navigate(QStringLiteral("http://127.0.0.1:%1/").arg(server->listeningPort())));
    const QString texts =
        QStringLiteral("Array.from(document.querySelectorAll('.scene-button')).map(b => b.textContent)");
    EXPECT_TRUE(driver.waitForValue(texts, QJsonArray{QStringLiteral("1Intro"), QStringLiteral("2Talk"),
                                                      QStringLiteral("3Outro")}))
        << driver.lastError().toStdString();

    ASSERT_TRUE(driver.click(QStringLiteral(".scene-button"), 2));
    EXPECT_TRUE(waitUntil([&] { return session.activeScene() && session.activeScene()->name == "Outro"; }));
    ASSERT_TRUE(driver.click(QStringLiteral("#liveButton")));
    EXPECT_TRUE(waitUntil([&] { return session.programScene() && session.programScene()->name == "Outro"; }));
    ASSERT_TRUE(driver.key(QStringLiteral("2")));
    EXPECT_TRUE(waitUntil([&] { return session.activeScene() && session.activeScene()->name == "Talk"; }));
    EXPECT_EQ(session.programScene()->name, "Outro");
    ASSERT_TRUE(driver.click(QStringLiteral("#blurButton")));
    EXPECT_TRUE(waitUntil([&] { return session.isBlurModeActive(); }));
    EXPECT_TRUE(driver.waitForValue(QStringLiteral("document.getElementById('blurButton').textContent"),
                                    QStringLiteral("🔓 Remove Blur")));
}
