// The remote interface on a real session object: the bridge publishes the
// session's state and carries the server's actions out on it.

#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <memory>

#include "document/Preset.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"
#include "remote/WebServerManager.h"
#include "remote/session/StreamManagerRemoteBridge.h"
#include "support/ExpectedResponses.h"
#include "support/RawHttpClient.h"
#include "support/TestApp.h"

using namespace orvane;
using namespace orvane::test;

namespace stream_manager_bridge_test {

class BridgeTest : public ::testing::Test {
protected:
    void SetUp() override {
        ensureApp();
        ASSERT_TRUE(dir.isValid());
        storage = std::make_unique<PresetStorage>(dir.filePath("data").toStdString());
        Preset preset;
        preset.name = "Show";
        for (const char* name : {"Intro", "Talk", "Outro"}) {
            StreamingScene scene;
            scene.name = name;
            preset.scenes.push_back(scene);
        }
        preset.activeSceneId = preset.scenes.front().id;
        storage->savePreset(preset);
        session = std::make_unique<StreamManager>(
            *storage, std::make_unique<QSettings>(dir.filePath("settings.ini"), QSettings::IniFormat));
        ASSERT_TRUE(session->currentPreset());

        server = std::make_unique<WebServerManager>();
        server->setServerPort(0);
        bridge = new StreamManagerRemoteBridge(session.get(), server.get(), server.get());
        server->startServer();
        ASSERT_TRUE(waitUntil([&] { return server->isServerRunning(); }));
        port = server->listeningPort();
    }

    std::string get(const std::string& path) { return orvane::test::exchange(port, "GET " + path + " HTTP/1.1\r\n\r\n"); }
    std::string post(const std::string& path) { return orvane::test::exchange(port, "POST " + path + " HTTP/1.1\r\n\r\n"); }
    const StreamingScene& scene(std::size_t i) const { return session->currentPreset()->scenes.at(i); }

    QTemporaryDir dir;
    std::unique_ptr<PresetStorage> storage;
    std::unique_ptr<StreamManager> session;
    std::unique_ptr<WebServerManager> server;  // goes before the session
    StreamManagerRemoteBridge* bridge = nullptr;
    quint16 port = 0;
};


TEST_F(BridgeTest, ReadsTheSession) {
    EXPECT_EQ(get("/api/scenes"),
              expected200(R"({"scenes":[{"name":"Intro","index":0,"isActive":true},)"
                          R"({"name":"Talk","index":1,"isActive":false},)"
                          R"({"name":"Outro","index":2,"isActive":false}],"activeScene":0})"));
    EXPECT_EQ(get("/api/status"),
              expected200(R"({"isRecording":false,"isStreaming":false,"activeScene":"Intro","programScene":"Intro"})"));
}

TEST_F(BridgeTest, ActionsChangeTheSession) {
    EXPECT_EQ(post("/api/scene/2"), expected200(R"({"success":true,"scene":"Outro"})"));
    ASSERT_TRUE(waitUntil([&] { return session->activeScene() && session->activeScene()->name == "Outro"; }));
    EXPECT_EQ(session->currentPreset()->activeSceneId, scene(2).id);
    EXPECT_NE(get("/api/scenes").find(R"("activeScene":2})"), std::string::npos);

    EXPECT_EQ(post("/api/live"), expected200(R"({"success":true,"message":"Live updated"})"));
    ASSERT_TRUE(waitUntil([&] { return session->programScene() && session->programScene()->name == "Outro"; }));
    EXPECT_NE(session->programScene()->id, scene(2).id);  // a go-live gives the program a fresh id
    EXPECT_NE(get("/api/status").find(R"("programScene":"Outro")"), std::string::npos);

    EXPECT_EQ(post("/api/progress"), expected200(R"({"success":true,"isEnabled":false})"));
    ASSERT_TRUE(waitUntil([&] { return !scene(2).progressBarEnabled; }));
    EXPECT_FALSE(session->activeScene()->progressBarEnabled);
    EXPECT_FALSE(storage->loadPresets().front().scenes.at(2).progressBarEnabled);  // saved like any scene change
    EXPECT_EQ(post("/api/branding"), expected200(R"({"success":true,"isEnabled":false})"));
    ASSERT_TRUE(waitUntil([&] { return !scene(2).brandingEnabled; }));

    EXPECT_EQ(post("/api/drawing"), expected200(R"({"success":true,"isEnabled":true})"));
    ASSERT_TRUE(waitUntil([&] { return session->drawing().isDrawingModeEnabled(); }));
    EXPECT_EQ(post("/api/blur"), expected200(R"({"success":true,"isEnabled":true})"));
    ASSERT_TRUE(waitUntil([&] { return session->isBlurModeActive(); }));

    EXPECT_EQ(post("/api/recording"), expected200(R"({"success":true,"isRecording":true})"));
    ASSERT_TRUE(waitUntil([&] { return session->isRecording(); }));
    EXPECT_NE(get("/api/status").find(R"("isRecording":true)"), std::string::npos);
}

TEST_F(BridgeTest, ARecorderTakesTheSwitch) {
    struct Recorder : RecordingControl {
        bool on = false;
        bool isRecording() const override { return on; }
        void startRecording() override { on = true; }
        void stopRecording() override { on = false; }
    } recorder;
    bridge->setRecordingControl(&recorder);
    EXPECT_EQ(post("/api/recording"), expected200(R"({"success":true,"isRecording":true})"));
    ASSERT_TRUE(waitUntil([&] { return recorder.on; }));
    EXPECT_FALSE(session->isRecording());
    bridge->setRecordingControl(nullptr);
}

TEST_F(BridgeTest, SessionGoneIsReported) {
    session.reset();
    EXPECT_EQ(get("/api/status"), expected200(R"({"error":"StreamManager not available"})"));
    EXPECT_EQ(post("/api/blur"), expected200(R"({"error":"StreamManager not available"})"));
}

}  // namespace stream_manager_bridge_test
