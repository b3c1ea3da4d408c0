#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "remote/RemotePage.h"
#include "remote/RemotePublishedSession.h"
#include "remote/RequestProcessor.h"
#include "support/ExpectedResponses.h"

using namespace orvane;
using orvane::test::expected200;
using orvane::test::kExpected404;
using orvane::test::kExpectedInternalError;

namespace request_processor_test {

RemoteSessionSnapshot threeScenes() {
    RemoteSessionSnapshot s;
    s.hasPreset = true;
    s.scenes = {{"A", "Intro"}, {"B", "Talk"}, {"C", "Outro"}};
    s.activeScene = RemoteSceneState{"B", "Talk", true, false};
    return s;
}

struct Case {
    const char* request;
    std::string expected;
};


TEST(RequestProcessor, RoutesByExactMethodAndPath) {
    const auto session = threeScenes();
    const std::string scenes =
        R"({"scenes":[{"name":"Intro","index":0,"isActive":false},{"name":"Talk","index":1,"isActive":true},)"
        R"({"name":"Outro","index":2,"isActive":false}],"activeScene":1})";
    const std::vector<Case> cases = {
        {"GET / HTTP/1.1\r\nHost: x\r\n\r\n", expected200(remotePageHtml(), "text/html")},
        {"GET /api/scenes HTTP/1.1\r\n\r\n", expected200(scenes)},
        {"GET /api/status HTTP/1.1\r\n\r\n",
         expected200(R"({"isRecording":false,"isStreaming":false,"activeScene":"Talk","programScene":"None"})")},
        {"POST /api/scene/0 HTTP/1.1\r\n\r\n", expected200(R"({"success":true,"scene":"Intro"})")},
        {"POST /api/live HTTP/1.1\r\n\r\n", expected200(R"({"success":true,"message":"Live updated"})")},
        {"POST /api/recording HTTP/1.1\r\n\r\n", expected200(R"({"success":true,"isRecording":true})")},
        {"POST /api/drawing HTTP/1.1\r\n\r\n", expected200(R"({"success":true,"isEnabled":true})")},
        {"POST /api/progress HTTP/1.1\r\n\r\n", expected200(R"({"success":true,"isEnabled":false})")},
        {"POST /api/branding HTTP/1.1\r\n\r\n", expected200(R"({"success":true,"isEnabled":true})")},
        {"POST /api/blur HTTP/1.1\r\n\r\n", expected200(R"({"success":true,"isEnabled":true})")},
        // No normalisation of any kind.
        {"GET /?x=1 HTTP/1.1\r\n\r\n", kExpected404},
        {"GET /index.html HTTP/1.1\r\n\r\n", kExpected404},
        {"GET /api/scenes/ HTTP/1.1\r\n\r\n", kExpected404},
        {"get / HTTP/1.1\r\n\r\n", kExpected404},
        {"HEAD / HTTP/1.1\r\n\r\n", kExpected404},
        {"POST / HTTP/1.1\r\n\r\n", kExpected404},
        {"GET /api/live HTTP/1.1\r\n\r\n", kExpected404},
        {"POST /api/scenes HTTP/1.1\r\n\r\n", kExpected404},
        {"OPTIONS /api/blur HTTP/1.1\r\n\r\n", kExpected404},
        // Malformed request lines.
        {"GET", kExpectedInternalError},
        {"GET\r\n\r\n", kExpectedInternalError},
        {"\r\n", kExpectedInternalError},
        {"", kExpectedInternalError},
        // Two tokens are enough; an empty token is a token.
        {"GET /", expected200(remotePageHtml(), "text/html")},
        {"GET  / HTTP/1.1\r\n\r\n", kExpected404},
        {"GET / HTTP/1.1 extra tokens\r\n", expected200(remotePageHtml(), "text/html")},
        // LF only: the whole request is one line.
        {"GET /\nHost: x\n\n", kExpected404},
        {"GET / HTTP/1.1\nHost: x\n\n", expected200(remotePageHtml(), "text/html")},
    };
    for (const auto& c : cases) {
        const RemoteReply reply = processRequest(c.request, &session);
        EXPECT_EQ(reply.response, c.expected) << "request: " << c.request;
    }
}

TEST(RequestProcessor, SceneIndexParsing) {
    const auto session = threeScenes();
    const std::string invalid = expected200(R"({"error":"Invalid scene index"})");
    const std::vector<Case> cases = {
        {"POST /api/scene/0 HTTP/1.1", expected200(R"({"success":true,"scene":"Intro"})")},
        {"POST /api/scene/2 HTTP/1.1", expected200(R"({"success":true,"scene":"Outro"})")},
        {"POST /api/scene/+1 HTTP/1.1", expected200(R"({"success":true,"scene":"Talk"})")},
        {"POST /api/scene/-0 HTTP/1.1", expected200(R"({"success":true,"scene":"Intro"})")},
        {"POST /api/scene/007 HTTP/1.1", invalid},
        {"POST /api/scene/3 HTTP/1.1", invalid},
        {"POST /api/scene/-1 HTTP/1.1", invalid},
        {"POST /api/scene/ HTTP/1.1", invalid},
        {"POST /api/scene/99999999999999999999 HTTP/1.1", invalid},
        {"POST /api/scene/9223372036854775807 HTTP/1.1", invalid},
        {"POST /api/scene/+ HTTP/1.1", invalid},
        {"POST /api/scene/- HTTP/1.1", invalid},
        {"POST /api/scene/+-1 HTTP/1.1", invalid},
        {"POST /api/scene/1a HTTP/1.1", invalid},
        {"POST /api/scene/1/ HTTP/1.1", invalid},
        {"POST /api/scene/1?x=2 HTTP/1.1", invalid},
        {"POST /api/scene/%31 HTTP/1.1", invalid},
        {"POST /api/scene/ 1", invalid},
    };
    for (const auto& c : cases) EXPECT_EQ(processRequest(c.request, &session).response, c.expected) << c.request;
    // "007" is 7 and out of range; a leading zero is not refused by itself.
    RemoteSessionSnapshot many = threeScenes();
    for (int i = 3; i < 10; ++i) many.scenes.push_back({"S" + std::to_string(i), "Scene " + std::to_string(i)});
    EXPECT_EQ(processRequest("POST /api/scene/007 HTTP/1.1", &many).response,
              expected200(R"({"success":true,"scene":"Scene 7"})"));
}

TEST(RequestProcessor, ActionsCarryWhatTheReplyPredicted) {
    auto session = threeScenes();
    session.isDrawingModeEnabled = true;
    session.isBlurModeActive = true;
    session.isRecording = true;

    auto reply = processRequest("POST /api/scene/2 HTTP/1.1", &session);
    ASSERT_TRUE(reply.action);
    EXPECT_EQ(reply.action->kind, RemoteAction::Kind::switchToScene);
    EXPECT_EQ(reply.action->sceneIndex, 2);
    EXPECT_EQ(reply.action->sceneId, "C");
    EXPECT_EQ(reply.action->sceneName, "Outro");

    reply = processRequest("POST /api/drawing HTTP/1.1", &session);
    EXPECT_EQ(reply.response, expected200(R"({"success":true,"isEnabled":false})"));
    ASSERT_TRUE(reply.action);
    EXPECT_EQ(reply.action->kind, RemoteAction::Kind::setDrawingMode);
    EXPECT_FALSE(reply.action->value);

    reply = processRequest("POST /api/blur HTTP/1.1", &session);
    EXPECT_EQ(reply.response, expected200(R"({"success":true,"isEnabled":false})"));
    ASSERT_TRUE(reply.action);
    EXPECT_EQ(reply.action->kind, RemoteAction::Kind::toggleBlurMode);

    reply = processRequest("POST /api/recording HTTP/1.1", &session);
    EXPECT_EQ(reply.response, expected200(R"({"success":true,"isRecording":false})"));
    ASSERT_TRUE(reply.action);
    EXPECT_EQ(reply.action->kind, RemoteAction::Kind::toggleRecording);

    reply = processRequest("POST /api/progress HTTP/1.1", &session);
    ASSERT_TRUE(reply.action);
    EXPECT_EQ(reply.action->kind, RemoteAction::Kind::setSceneProgressBar);
    EXPECT_EQ(reply.action->sceneId, "B");
    EXPECT_FALSE(reply.action->value);

    reply = processRequest("POST /api/branding HTTP/1.1", &session);
    ASSERT_TRUE(reply.action);
    EXPECT_EQ(reply.action->kind, RemoteAction::Kind::setSceneBranding);
    EXPECT_EQ(reply.action->sceneId, "B");
    EXPECT_TRUE(reply.action->value);

    reply = processRequest("POST /api/live HTTP/1.1", &session);
    ASSERT_TRUE(reply.action);
    EXPECT_EQ(reply.action->kind, RemoteAction::Kind::updateLive);

    for (const char* read : {"GET / HTTP/1.1", "GET /api/scenes HTTP/1.1", "GET /api/status HTTP/1.1",
                             "POST /api/scene/9 HTTP/1.1", "OPTIONS /api/blur HTTP/1.1", "GET"})
        EXPECT_FALSE(processRequest(read, &session).action) << read;
}

TEST(RequestProcessor, EmptyPresetAndMissingScenes) {
    RemoteSessionSnapshot empty;
    empty.hasPreset = true;
    EXPECT_EQ(processRequest("GET /api/scenes HTTP/1.1", &empty).response,
              expected200(R"({"scenes":[],"activeScene":-1})"));
    EXPECT_EQ(processRequest("POST /api/scene/0 HTTP/1.1", &empty).response,
              expected200(R"({"error":"Invalid scene index"})"));

    // An active scene that is not in the preset marks nothing.
    auto stray = threeScenes();
    stray.activeScene = RemoteSceneState{"Z", "Elsewhere"};
    EXPECT_EQ(processRequest("GET /api/scenes HTTP/1.1", &stray).response,
              expected200(R"({"scenes":[{"name":"Intro","index":0,"isActive":false},)"
                          R"({"name":"Talk","index":1,"isActive":false},)"
                          R"({"name":"Outro","index":2,"isActive":false}],"activeScene":-1})"));

    // No active scene: the overlay toggles refuse, blur and drawing still work.
    auto idle = threeScenes();
    idle.activeScene.reset();
    idle.programScene = RemoteSceneState{"P", "On Air"};
    EXPECT_EQ(processRequest("GET /api/status HTTP/1.1", &idle).response,
              expected200(R"({"isRecording":false,"isStreaming":false,"activeScene":"None","programScene":"On Air"})"));
    EXPECT_EQ(processRequest("POST /api/progress HTTP/1.1", &idle).response,
              expected200(R"({"error":"No active scene"})"));
    EXPECT_EQ(processRequest("POST /api/branding HTTP/1.1", &idle).response,
              expected200(R"({"error":"No active scene"})"));
    EXPECT_FALSE(processRequest("POST /api/branding HTTP/1.1", &idle).action);
    EXPECT_EQ(processRequest("POST /api/blur HTTP/1.1", &idle).response,
              expected200(R"({"success":true,"isEnabled":true})"));
    EXPECT_EQ(processRequest("POST /api/drawing HTTP/1.1", &idle).response,
              expected200(R"({"success":true,"isEnabled":true})"));

    // No preset loaded.
    RemoteSessionSnapshot none;
    EXPECT_EQ(processRequest("GET /api/scenes HTTP/1.1", &none).response,
              expected200(R"({"error":"No preset available"})"));
    EXPECT_EQ(processRequest("POST /api/scene/0 HTTP/1.1", &none).response,
              expected200(R"({"error":"Invalid scene index"})"));
}

TEST(RequestProcessor, SessionGone) {
    const std::string gone = expected200(R"({"error":"StreamManager not available"})");
    EXPECT_EQ(processRequest("GET /api/scenes HTTP/1.1", nullptr).response,
              expected200(R"({"error":"No preset available"})"));
    EXPECT_EQ(processRequest("GET /api/status HTTP/1.1", nullptr).response, gone);
    EXPECT_EQ(processRequest("POST /api/scene/0 HTTP/1.1", nullptr).response,
              expected200(R"({"error":"Invalid scene index"})"));
    for (const char* path : {"/api/live", "/api/recording", "/api/drawing", "/api/blur"}) {
        const auto reply = processRequest(std::string("POST ") + path + " HTTP/1.1", nullptr);
        EXPECT_EQ(reply.response, gone) << path;
        EXPECT_FALSE(reply.action);
    }
    EXPECT_EQ(processRequest("POST /api/progress HTTP/1.1", nullptr).response,
              expected200(R"({"error":"No active scene"})"));
    EXPECT_EQ(processRequest("GET / HTTP/1.1", nullptr).response, expected200(remotePageHtml(), "text/html"));
}

TEST(RequestProcessor, NamesAreEscapedJsonAndCountedInBytes) {
    RemoteSessionSnapshot s;
    s.hasPreset = true;
    s.scenes = {{"A", "Café \"live\" 🎬\n<b>"}};
    const auto reply = processRequest("POST /api/scene/0 HTTP/1.1", &s);
    const std::string body = "{\"success\":true,\"scene\":\"Café \\\"live\\\" 🎬\\n<b>\"}";
    EXPECT_EQ(reply.response, expected200(body));
    EXPECT_NE(reply.response.find("Content-Length: " + std::to_string(body.size()) + "\r\n"), std::string::npos);
}

TEST(RequestProcessor, NameTheSerializerRefusesGivesTheLiteralFallback) {
    RemoteSessionSnapshot s;
    s.hasPreset = true;
    s.scenes = {{"A", std::string("bad \xff name")}};
    EXPECT_EQ(processRequest("GET /api/scenes HTTP/1.1", &s).response, kExpectedInternalError);
}

TEST(RequestProcessor, BytesThatAreNotUtf8ReadAsEmpty) {
    const auto session = threeScenes();
    EXPECT_EQ(processRequestBytes("GET / HTTP/1.1\r\n\xc3\x28\r\n", &session).response, kExpectedInternalError);
    EXPECT_EQ(processRequestBytes("GET /\xff HTTP/1.1\r\n", &session).response, kExpectedInternalError);
    // A request cut inside a character is invalid as a whole.
    EXPECT_EQ(processRequestBytes("GET / HTTP/1.1\r\nX: \xe2\x82", &session).response, kExpectedInternalError);
    EXPECT_EQ(processRequestBytes("GET /api/status HTTP/1.1\r\nX: \xe2\x82\xac\r\n", &session).response,
              expected200(R"({"isRecording":false,"isStreaming":false,"activeScene":"Talk","programScene":"None"})"));
}

TEST(RequestProcessor, PreparedRepliesMatchTheHandlers) {
    auto snapshot = std::make_shared<RemoteSessionSnapshot>(threeScenes());
    snapshot->programScene = RemoteSceneState{"P", "On Air"};
    const auto published = RemotePublishedSession::make(snapshot);
    for (const char* request : {"GET /api/scenes HTTP/1.1\r\n\r\n", "GET /api/status HTTP/1.1\r\n\r\n",
                                "GET / HTTP/1.1\r\n\r\n", "POST /api/scene/1 HTTP/1.1\r\n\r\n",
                                "POST /api/blur HTTP/1.1\r\n\r\n", "GET /api/scenes/ HTTP/1.1\r\n\r\n", "GET"}) {
        const auto direct = processRequestBytes(request, snapshot.get());
        RemoteReply built;
        const std::string_view prepared = processRequestBytes(request, *published, built);
        EXPECT_EQ(prepared, direct.response) << request;
        EXPECT_EQ(built.action, direct.action) << request;
    }
    // The read routes and the page are not built per request.
    RemoteReply unused;
    EXPECT_EQ(processRequestBytes("GET /api/scenes HTTP/1.1", *published, unused).data(),
              published->scenesResponse.data());
    EXPECT_EQ(processRequestBytes("GET / HTTP/1.1", *published, unused).data(),
              processRequestBytes("GET / HTTP/1.1", *published, unused).data());
    EXPECT_TRUE(unused.response.empty());

    const auto gone = RemotePublishedSession::make(nullptr);
    RemoteReply built;
    EXPECT_EQ(processRequestBytes("GET /api/status HTTP/1.1", *gone, built),
              expected200(R"({"error":"StreamManager not available"})"));
    EXPECT_EQ(processRequestBytes("GET /api/scenes HTTP/1.1", *gone, built),
              expected200(R"({"error":"No preset available"})"));
}

}  // namespace request_processor_test
