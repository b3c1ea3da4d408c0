#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "document/Preset.h"
#include "engine/StreamManager.h"
#include "support/TestHome.h"

namespace orvane::test {

// A session started on a stored preset "Show" with the scenes A, B and C,
// A active.
class SessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        preset = presetWithScenes("Show", {"A", "B", "C"});
        home.savePreset(preset);
        session = home.startSession();
        ASSERT_TRUE(session->currentPreset());
    }

    // The scene as the document holds it now.
    const StreamingScene& scene(std::size_t index) const { return session->currentPreset()->scenes.at(index); }
    void setTransition(bool enabled, TransitionType type, double durationSeconds) {
        Preset copy = *session->currentPreset();
        copy.sceneTransition = {enabled, type, durationSeconds};
        session->setCurrentPreset(copy);
    }

    TestHome home;
    Preset preset;
    std::unique_ptr<StreamManager> session;
};

}  // namespace orvane::test
