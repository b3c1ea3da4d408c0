#include "document/PresetTemplates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "document/DocumentCodec.h"
#include "document/PresetStorage.h"
#include "support/FileHelpers.h"
#include "support/StdoutCapture.h"
#include "support/TempXdgDir.h"

namespace orvane {
namespace preset_templates_test {

using ::testing::ElementsAre;

std::vector<std::string> sceneNames(const std::vector<StreamingScene>& scenes) {
    std::vector<std::string> names;
    for (const auto& s : scenes) names.push_back(s.name);
    return names;
}

// Every field of a new scene except id and name.
void expectNewSceneRecord(const StreamingScene& scene, const std::string& icon = "video.fill") {
    SCOPED_TRACE("scene \"" + scene.name + "\"");
    EXPECT_FALSE(scene.id.isNil());
    EXPECT_EQ(scene.icon, icon);
    EXPECT_TRUE(scene.sources.empty());
    EXPECT_FALSE(scene.selectedSourceId);
    EXPECT_TRUE(scene.brandingEnabled);
    EXPECT_TRUE(scene.progressBarEnabled);
    EXPECT_EQ(scene.backgroundColor, (CodableColor{0, 0, 0, 1}));
    EXPECT_EQ(scene.backgroundType, BackgroundType::gradient);
    EXPECT_EQ(scene.gradientColors,
              (std::vector<CodableColor>{{0.1, 0.3, 0.5, 1}, {0.2, 0.5, 0.7, 1}, {0.3, 0.7, 0.8, 1}}));
    EXPECT_EQ(scene.gradientDirection, GradientDirection::topToBottom);
    EXPECT_EQ(scene.layout, SceneLayout::fullCamera);
    EXPECT_FALSE(scene.cinematicZoomEnabled);
}

struct TemplateCase {
    PresetTemplate presetTemplate;
    std::string storedString;
    std::string card;
    std::vector<std::string> scenes;

    // Keeps test names readable (and stable) in the test runner's listing.
    friend void PrintTo(const TemplateCase& c, std::ostream* out) { *out << c.storedString; }
};

class PresetTemplateTable : public ::testing::TestWithParam<TemplateCase> {};

TEST_P(PresetTemplateTable, CardScenesAndRecordsFollowTheTable) {
    const TemplateCase& c = GetParam();
    EXPECT_EQ(toString(c.presetTemplate), c.storedString);
    EXPECT_EQ(cardText(c.presetTemplate), c.card);

    const auto scenes = createScenesForTemplate(c.presetTemplate);
    EXPECT_EQ(sceneNames(scenes), c.scenes);
    std::set<Uuid> ids;
    for (const auto& scene : scenes) {
        expectNewSceneRecord(scene);
        ids.insert(scene.id);
    }
    EXPECT_EQ(ids.size(), scenes.size()) << "each scene has its own id";

    const auto again = createScenesForTemplate(c.presetTemplate);
    for (std::size_t i = 0; i < scenes.size(); ++i) EXPECT_NE(again[i].id, scenes[i].id) << "ids are fresh per call";
}

TEST_P(PresetTemplateTable, CreatePresetTakesTheTemplatesScenesAndTheDefaults) {
    const TemplateCase& c = GetParam();
    const Preset preset = createPreset("My Show", c.presetTemplate);
    EXPECT_FALSE(preset.id.isNil());
    EXPECT_EQ(preset.name, "My Show");
    EXPECT_EQ(sceneNames(preset.scenes), c.scenes);
    ASSERT_FALSE(preset.scenes.empty());
    EXPECT_EQ(preset.activeSceneId, preset.scenes.front().id);
    EXPECT_FALSE(preset.branding);
    EXPECT_FALSE(preset.progressBar);
    EXPECT_FALSE(preset.teleprompter);
    EXPECT_TRUE(preset.hideProgramWhenPopout);
    EXPECT_EQ(preset.sceneTransition, (SceneTransitionConfig{true, TransitionType::fade, 1.1}));

    // The template itself is not part of the document.
    const std::string json = encodePreset(preset);
    EXPECT_EQ(json.find("\"" + c.storedString + "\""), std::string::npos);
    EXPECT_EQ(json.find("template"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    AllTemplates, PresetTemplateTable,
    ::testing::Values(
        TemplateCase{PresetTemplate::streaming, "Streaming", "3 empty scenes for streaming",
                     {"Screen Only", "Screen + Webcam", "Webcam Focus"}},
        TemplateCase{PresetTemplate::presentation, "Presentation", "3 empty scenes for presentations",
                     {"Slides Only", "Picture in Picture", "Speaker Focus"}},
        TemplateCase{PresetTemplate::gaming, "Gaming", "3 empty scenes for gaming",
                     {"Game Only", "Game + Webcam", "Intermission"}},
        TemplateCase{PresetTemplate::custom, "Custom", "Empty preset, add your own scenes", {"Scene 1"}}),
    [](const auto& info) { return info.param.storedString; });

TEST(PresetTemplates, TemplatesAreListedInTheirOrder) {
    EXPECT_THAT(allCases<PresetTemplate>(), ElementsAre(PresetTemplate::streaming, PresetTemplate::presentation,
                                                        PresetTemplate::gaming, PresetTemplate::custom));
}

TEST(PresetTemplates, ACustomPresetHasOneSceneNamedScene1AndItsActiveSceneIdNamesIt) {
    const Preset preset = createPreset("Custom One", PresetTemplate::custom);
    ASSERT_EQ(preset.scenes.size(), 1u);
    EXPECT_EQ(preset.scenes[0].name, "Scene 1");
    ASSERT_TRUE(preset.activeSceneId);
    EXPECT_EQ(*preset.activeSceneId, preset.scenes[0].id);

    // And so it stays through the file.
    const auto decoded = decodePreset(encodePreset(preset));
    ASSERT_TRUE(decoded) << decoded.error;
    EXPECT_EQ(decoded.value->activeSceneId, decoded.value->scenes.at(0).id);
}

TEST(PresetTemplates, ANewPresetHasNoBrandingAlthoughItsScenesEnableIt) {
    // The overlay needs both the scene's switch and the preset's section;
    // a new preset has only the first.
    for (PresetTemplate t : allCases<PresetTemplate>()) {
        const Preset preset = createPreset("Show", t);
        EXPECT_FALSE(preset.branding);
        for (const auto& scene : preset.scenes) EXPECT_TRUE(scene.brandingEnabled);
        const auto json = nlohmann::json::parse(encodePreset(preset));
        EXPECT_FALSE(json.contains("branding"));
        EXPECT_FALSE(json.contains("progressBar"));
        EXPECT_FALSE(json.contains("teleprompter"));
        EXPECT_TRUE(json.contains("activeSceneId"));
    }
}

TEST(PresetTemplates, AddedScenesGoToTheEndSoTheTenthSitsPastTheNineNumberKeys) {
    // Number keys 1 to 9 reach scenes[0] to scenes[8]; a scene's key is its
    // place in the array, and added scenes are appended.
    Preset preset = createPreset("Long Show", PresetTemplate::streaming);
    for (int n = 4; n <= 10; ++n) preset.scenes.push_back(makeScene("Scene " + std::to_string(n)));
    ASSERT_EQ(preset.scenes.size(), 10u);
    EXPECT_EQ(preset.scenes[8].name, "Scene 9");
    EXPECT_EQ(preset.scenes[9].name, "Scene 10");

    const auto decoded = decodePreset(encodePreset(preset));
    ASSERT_TRUE(decoded) << decoded.error;
    ASSERT_EQ(decoded.value->scenes.size(), 10u);
    EXPECT_EQ(decoded.value->scenes[9].id, preset.scenes[9].id);
    EXPECT_EQ(decoded.value->scenes[9].name, "Scene 10");
}

TEST(PresetTemplates, TwoScenesMayHaveTheSameName) {
    test::TempXdgDir xdg;
    test::StdoutCapture quiet;
    PresetStorage storage(xdg.base());

    Preset preset = createPreset("Twins", PresetTemplate::custom);
    preset.scenes.push_back(makeScene("Scene 1"));
    ASSERT_EQ(preset.scenes.size(), 2u);
    EXPECT_NE(preset.scenes[0].id, preset.scenes[1].id);
    EXPECT_FALSE(preset.scenes[0] == preset.scenes[1]);

    storage.savePreset(preset);
    const auto loaded = storage.loadPresets();
    ASSERT_EQ(loaded.size(), 1u);
    EXPECT_THAT(sceneNames(loaded[0].scenes), ElementsAre("Scene 1", "Scene 1"));
    EXPECT_EQ(loaded[0].scenes[1].id, preset.scenes[1].id);
}

TEST(PresetTemplates, AddSceneWithAnEmptyFieldMakesASceneNamedWithTheEmptyString) {
    const StreamingScene scene = makeScene("", "star.fill");
    EXPECT_EQ(scene.name, "");
    expectNewSceneRecord(scene, "star.fill");

    Preset preset = createPreset("Show", PresetTemplate::custom);
    preset.scenes.push_back(scene);
    const auto json = nlohmann::json::parse(encodePreset(preset));
    ASSERT_TRUE(json["scenes"][1].contains("name"));
    EXPECT_EQ(json["scenes"][1]["name"], "");
    const auto decoded = decodePreset(encodePreset(preset));
    ASSERT_TRUE(decoded) << decoded.error;
    EXPECT_EQ(decoded.value->scenes.at(1).name, "");
}

TEST(PresetTemplates, MakeSceneTakesNameAndIconAndDefaultsTheRest) {
    const StreamingScene scene = makeScene("Interview", "mic.fill");
    EXPECT_EQ(scene.name, "Interview");
    expectNewSceneRecord(scene, "mic.fill");
    EXPECT_NE(makeScene("Interview").id, makeScene("Interview").id);
    expectNewSceneRecord(makeScene("Plain"));
}

TEST(PresetTemplates, TheSessionsDefaultSceneIsTheSameRecord) {
    // A scene made by the record's own defaults equals a template scene in
    // every field but id and name.
    StreamingScene plain;
    plain.name = "Default Scene";
    expectNewSceneRecord(plain);
}

TEST(PresetTemplates, AvailableIconsListTheEightSymbolsInOrder) {
    EXPECT_THAT(availableIcons, ElementsAre("video.fill", "display", "camera.fill", "person.fill",
                                            "gamecontroller.fill", "mic.fill", "music.note", "star.fill"));
    EXPECT_EQ(defaultSceneIcon, "video.fill");
    EXPECT_EQ(availableIcons.front(), defaultSceneIcon);
}

}  // namespace
}  // namespace orvane
