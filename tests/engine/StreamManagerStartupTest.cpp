// Start-up on real files: which preset opens, what is repaired and written,
// and the lines that say so.

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>

#include "document/Uuid.h"
#include "engine/PerformanceMonitor.h"
#include "engine/StreamManager.h"
#include "engine/VirtualCameraManager.h"
#include "support/LogCapture.h"
#include "support/TestHome.h"

namespace orvane {
namespace stream_manager_startup_test {

using test::LogCapture;
using test::presetWithScenes;
using test::TestHome;

const QString lastSelectedKey = QStringLiteral("last_selected_preset");

TEST(StreamManagerStartup, NoPresetsStartsEmptyAndWritesNothing) {
    TestHome home;
    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(log.sessionLines(), std::vector<std::string>{"ℹ️ No presets found - starting with empty state"});
    EXPECT_EQ(log.count("✅ Preset saved: "), 0);
    EXPECT_FALSE(session->currentPreset());
    EXPECT_FALSE(session->activeScene());
    EXPECT_FALSE(session->programScene());
    EXPECT_TRUE(home.presetFileNames().empty());
    EXPECT_FALSE(home.settings()->contains(lastSelectedKey));
}

TEST(StreamManagerStartup, LastSelectedPresetOpensAndIsWrittenBack) {
    TestHome home;
    Preset older = presetWithScenes("Older", {"Intro", "Talk"});
    older.activeSceneId = older.scenes[1].id;
    Preset newer = presetWithScenes("Newer", {"A"});
    home.savePreset(older, 600);
    home.savePreset(newer, 60);
    home.setSettingsValue(lastSelectedKey, QString::fromStdString(older.id.toString()));
    const auto before = home.modificationTime(older);

    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"✅ Loaded last selected preset: Older",
                                                            "✅ Restored active scene: Talk"}));
    EXPECT_EQ(log.count("✅ Preset saved: Older"), 1);
    ASSERT_TRUE(session->currentPreset());
    EXPECT_EQ(session->currentPreset()->id, older.id);
    ASSERT_TRUE(session->activeScene());
    ASSERT_TRUE(session->programScene());
    EXPECT_EQ(session->activeScene()->id, older.scenes[1].id);
    // Before any go-live the program shows the very scene, same id.
    EXPECT_EQ(session->programScene()->id, older.scenes[1].id);
    // Opening rewrites the file, which moves the preset to the head of the list.
    EXPECT_GT(home.modificationTime(older), before);
    EXPECT_EQ(home.storage().loadPresets().front().id, older.id);
}

TEST(StreamManagerStartup, LowerCaseLastSelectedIdStillMatches) {
    TestHome home;
    Preset preset = presetWithScenes("Show", {"One"});
    home.savePreset(preset, 10);
    std::string lower = preset.id.toString();
    for (auto& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    home.setSettingsValue(lastSelectedKey, QString::fromStdString(lower));
    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(log.sessionLines().front(), "✅ Loaded last selected preset: Show");
}

TEST(StreamManagerStartup, StaleLastSelectedIdOpensTheNewestPreset) {
    TestHome home;
    Preset older = presetWithScenes("Older", {"X"});
    Preset newest = presetWithScenes("Newest", {"Y", "Z"});
    home.savePreset(older, 600);
    home.savePreset(newest, 30);
    home.setSettingsValue(lastSelectedKey, QString::fromStdString(Uuid::generate().toString()));

    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"✅ Loaded first available preset: Newest",
                                                            "✅ Restored active scene: Y"}));
    ASSERT_TRUE(session->currentPreset());
    EXPECT_EQ(session->currentPreset()->id, newest.id);
}

TEST(StreamManagerStartup, UnparsableLastSelectedIdCountsAsNone) {
    TestHome home;
    Preset only = presetWithScenes("Only", {"S"});
    home.savePreset(only);
    home.setSettingsValue(lastSelectedKey, QStringLiteral("not a uuid"));
    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(log.sessionLines().front(), "✅ Loaded first available preset: Only");
}

TEST(StreamManagerStartup, EmptyScenesGainSceneOneAndAreSaved) {
    TestHome home;
    Preset empty = presetWithScenes("Bare", {});
    empty.activeSceneId = Uuid::generate();  // stale: names no scene
    home.savePreset(empty);

    LogCapture log;
    auto session = home.startSession();
    // Step 6 overwrites the stale id, so the new scene is restored, not "first".
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"✅ Loaded first available preset: Bare",
                                                            "✅ Created default empty scene for preset: Bare",
                                                            "✅ Restored active scene: Scene 1"}));
    // The load's assignment, the repair's assignment and the extra save.
    EXPECT_EQ(log.count("✅ Preset saved: Bare"), 3);

    ASSERT_TRUE(session->currentPreset());
    ASSERT_EQ(session->currentPreset()->scenes.size(), 1u);
    const StreamingScene& scene = session->currentPreset()->scenes.front();
    EXPECT_EQ(scene.name, "Scene 1");
    EXPECT_EQ(scene.icon, "video.fill");
    EXPECT_TRUE(scene.sources.empty());
    EXPECT_EQ(session->currentPreset()->activeSceneId, scene.id);
    EXPECT_EQ(session->activeScene()->id, scene.id);
    EXPECT_EQ(session->programScene()->id, scene.id);

    const auto onDisk = home.readPresetFile(empty);
    ASSERT_TRUE(onDisk);
    ASSERT_EQ(onDisk->scenes.size(), 1u);
    EXPECT_EQ(onDisk->scenes.front().id, scene.id);
    EXPECT_EQ(onDisk->activeSceneId, scene.id);
}

TEST(StreamManagerStartup, StaleActiveSceneIdFallsToTheFirstScene) {
    TestHome home;
    Preset preset = presetWithScenes("Talk", {"Opening", "Demo"});
    preset.activeSceneId = Uuid::generate();
    home.savePreset(preset);

    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"✅ Loaded first available preset: Talk",
                                                            "✅ Using first scene: Opening"}));
    EXPECT_EQ(session->activeScene()->id, preset.scenes[0].id);
    EXPECT_EQ(session->programScene()->id, preset.scenes[0].id);
    // The stale id itself is not repaired at start.
    EXPECT_EQ(session->currentPreset()->activeSceneId, preset.activeSceneId);
}

TEST(StreamManagerStartup, AbsentActiveSceneIdFallsToTheFirstScene) {
    TestHome home;
    Preset preset = presetWithScenes("Plain", {"First", "Second"});
    preset.activeSceneId.reset();
    home.savePreset(preset);
    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(log.sessionLines().back(), "✅ Using first scene: First");
}

TEST(StreamManagerStartup, DamagedFileIsSkippedAndKept) {
    TestHome home;
    Preset good = presetWithScenes("Good", {"S"});
    home.savePreset(good);
    const auto damaged = home.storage().presetsDirectory() / (Uuid::generate().toString() + ".json");
    {
        std::ofstream out(damaged);
        out << "{ not json";
    }
    LogCapture log;
    auto session = home.startSession();
    EXPECT_EQ(session->currentPreset()->id, good.id);
    EXPECT_TRUE(std::filesystem::exists(damaged));
}

TEST(StreamManagerStartup, StartsManagersAndNoTimers) {
    TestHome home;
    auto session = home.startSession();
    ASSERT_NE(session->performanceMonitor(), nullptr);
    EXPECT_FALSE(session->performanceMonitor()->isActive());
    EXPECT_FALSE(session->performanceMonitor()->isSampling());
    EXPECT_FALSE(session->virtualCameraManager().isRunning());
}

}  // namespace
}  // namespace orvane
