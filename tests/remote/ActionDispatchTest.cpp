#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "remote/RecordingControl.h"
#include "remote/RemoteActionDispatch.h"
#include "remote/RemoteActions.h"

using namespace orvane;

namespace action_dispatch_test {

struct Journal : RemoteActions, RecordingControl {
    std::vector<std::string> calls;
    bool recording = false;

    void switchToScene(int index, const std::string& id) override {
        calls.push_back("switch " + std::to_string(index) + " " + id);
    }
    void updateLive() override { calls.push_back("live"); }
    void setDrawingModeEnabled(bool on) override { calls.push_back(std::string("drawing ") + (on ? "on" : "off")); }
    void setSceneProgressBarEnabled(const std::string& id, bool on) override {
        calls.push_back("progress " + id + (on ? " on" : " off"));
    }
    void setSceneBrandingEnabled(const std::string& id, bool on) override {
        calls.push_back("branding " + id + (on ? " on" : " off"));
    }
    void toggleBlurMode() override { calls.push_back("blur"); }
    bool isRecording() const override { return recording; }
    void startRecording() override {
        calls.push_back("start");
        recording = true;
    }
    void stopRecording() override {
        calls.push_back("stop");
        recording = false;
    }
};

RemoteAction action(RemoteAction::Kind kind, bool value = false, std::string id = {}, int index = -1) {
    RemoteAction a;
    a.kind = kind;
    a.value = value;
    a.sceneId = std::move(id);
    a.sceneIndex = index;
    return a;
}


TEST(ActionDispatch, EachKindReachesItsOperation) {
    Journal j;
    using K = RemoteAction::Kind;
    applyRemoteAction(action(K::switchToScene, false, "S2", 2), &j, &j);
    applyRemoteAction(action(K::updateLive), &j, &j);
    applyRemoteAction(action(K::setDrawingMode, true), &j, &j);
    applyRemoteAction(action(K::setSceneProgressBar, false, "S1"), &j, &j);
    applyRemoteAction(action(K::setSceneBranding, true, "S1"), &j, &j);
    applyRemoteAction(action(K::toggleBlurMode), &j, &j);
    EXPECT_EQ(j.calls, (std::vector<std::string>{"switch 2 S2", "live", "drawing on", "progress S1 off",
                                                 "branding S1 on", "blur"}));
}

TEST(ActionDispatch, RecordingFlipsTheRecordersStateAtRunTime) {
    Journal j;
    const auto toggle = action(RemoteAction::Kind::toggleRecording);
    applyRemoteAction(toggle, &j, &j);
    applyRemoteAction(toggle, &j, &j);
    applyRemoteAction(toggle, &j, &j);
    EXPECT_EQ(j.calls, (std::vector<std::string>{"start", "stop", "start"}));
    EXPECT_TRUE(j.recording);
}

TEST(ActionDispatch, MissingTargetsDoNothing) {
    Journal j;
    applyRemoteAction(action(RemoteAction::Kind::toggleRecording), &j, nullptr);
    applyRemoteAction(action(RemoteAction::Kind::updateLive), nullptr, &j);
    EXPECT_TRUE(j.calls.empty());
}

}  // namespace action_dispatch_test
