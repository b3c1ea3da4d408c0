#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <unordered_set>

#include "document/DocumentCodec.h"
#include "document/GradientPreset.h"
#include "support/DeepEqual.h"
#include "support/GoldenPresets.h"

namespace orvane {
namespace document_codec_test {

using nlohmann::json;
using testing::deepEqual;
using testing::fixedId;
using testing::makeGoldenPreset;

json asJson(const std::string& text) { return json::parse(text); }

// A minimal valid preset as JSON, to be bent by each test.
json minimalPresetJson() {
    Preset p;
    p.id = fixedId(1);
    p.name = "Minimal";
    StreamingScene scene;
    scene.id = fixedId(2);
    scene.name = "Scene 1";
    Source source;
    source.id = fixedId(3);
    source.type = SourceType::camera;
    source.name = "Camera";
    scene.sources.push_back(source);
    p.scenes.push_back(scene);
    return asJson(encodePreset(p));
}

Decoded<Preset> decode(const json& j) { return decodePreset(j.dump()); }

// ---------------------------------------------------------------- optional sections

TEST(DocumentCodec, AbsentOptionalSectionsReadAbsentAndStayAbsent) {
    json j = minimalPresetJson();
    ASSERT_FALSE(j.contains("activeSceneId"));
    ASSERT_FALSE(j.contains("branding"));
    auto decoded = decode(j);
    ASSERT_TRUE(decoded) << decoded.error;
    EXPECT_FALSE(decoded.value->activeSceneId);
    EXPECT_FALSE(decoded.value->branding);
    EXPECT_FALSE(decoded.value->progressBar);
    EXPECT_FALSE(decoded.value->teleprompter);
    json again = asJson(encodePreset(*decoded.value));
    for (const char* key : {"activeSceneId", "branding", "progressBar", "teleprompter"})
        EXPECT_FALSE(again.contains(key)) << key;
}

TEST(DocumentCodec, NullOptionalKeyReadsAsNoValue) {
    json j = minimalPresetJson();
    j["branding"] = nullptr;
    j["activeSceneId"] = nullptr;
    auto decoded = decode(j);
    ASSERT_TRUE(decoded) << decoded.error;
    EXPECT_FALSE(decoded.value->branding);
    EXPECT_FALSE(decoded.value->activeSceneId);
}

TEST(DocumentCodec, BrandingDefaultsWhenAbsent) {
    auto decoded = decode(minimalPresetJson());
    ASSERT_TRUE(decoded);
    const BrandingConfig shown = decoded.value->branding.value_or(BrandingConfig{});
    EXPECT_FALSE(shown.enabled);
    EXPECT_EQ(shown.textSize, 16);
    EXPECT_EQ(shown.position, BrandingPosition::bottomRight);
    EXPECT_EQ(shown.backgroundColor, (CodableColor{0, 0, 0, 0.6}));
    Preset saved = *decoded.value;
    EXPECT_FALSE(asJson(encodePreset(saved)).contains("branding"));
    saved.branding = shown;
    EXPECT_TRUE(asJson(encodePreset(saved)).contains("branding"));
}

// ---------------------------------------------------------------- required keys

struct MissingKeyCase {
    const char* name;
    std::function<void(json&)> bend;
    const char* expectedError;
};

class DocumentCodecRejects : public ::testing::TestWithParam<MissingKeyCase> {};

TEST_P(DocumentCodecRejects, WholeDocumentWithPathNamedError) {
    json j = minimalPresetJson();
    GetParam().bend(j);
    auto decoded = decode(j);
    EXPECT_FALSE(decoded);
    EXPECT_EQ(decoded.error, GetParam().expectedError);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DocumentCodecRejects,
    ::testing::Values(
        MissingKeyCase{"hideProgramWhenPopoutMissing", [](json& j) { j.erase("hideProgramWhenPopout"); },
                       "hideProgramWhenPopout: missing key"},
        MissingKeyCase{"sceneTransitionMissing", [](json& j) { j.erase("sceneTransition"); },
                       "sceneTransition: missing key"},
        MissingKeyCase{"cameraContrastMissing",
                       [](json& j) { j["scenes"][0]["sources"][0]["configuration"].erase("cameraContrast"); },
                       "scenes[0].sources[0].configuration.cameraContrast: missing key"},
        MissingKeyCase{"layoutCaseNameNotStoredString",
                       [](json& j) { j["scenes"][0]["layout"] = "splitHorizontal"; },
                       "scenes[0].layout: unknown value \"splitHorizontal\""},
        MissingKeyCase{"unknownTransitionType", [](json& j) { j["sceneTransition"]["type"] = "Wipe"; },
                       "sceneTransition.type: unknown value \"Wipe\""},
        MissingKeyCase{"requiredNull", [](json& j) { j["name"] = nullptr; }, "name: null value"},
        MissingKeyCase{"wrongTypeBool", [](json& j) { j["hideProgramWhenPopout"] = 1; },
                       "hideProgramWhenPopout: expected a boolean"},
        MissingKeyCase{"wrongTypeNumber", [](json& j) { j["sceneTransition"]["duration"] = "1.1"; },
                       "sceneTransition.duration: expected a number"},
        MissingKeyCase{"pointAsObject",
                       [](json& j) { j["scenes"][0]["sources"][0]["configuration"]["position"] = {{"x", 0}, {"y", 0}}; },
                       "scenes[0].sources[0].configuration.position: expected an array of two numbers"},
        MissingKeyCase{"badUuid", [](json& j) { j["id"] = "not-a-uuid"; }, "id: invalid UUID \"not-a-uuid\""},
        MissingKeyCase{"negativeScreenId",
                       [](json& j) { j["scenes"][0]["sources"][0]["configuration"]["screenId"] = -1; },
                       "scenes[0].sources[0].configuration.screenId: integer out of range"},
        MissingKeyCase{"sceneNotObject", [](json& j) { j["scenes"][0] = 5; }, "scenes[0]: expected an object"},
        MissingKeyCase{"sceneNull", [](json& j) { j["scenes"][0] = nullptr; }, "scenes[0]: null value"},
        MissingKeyCase{"deckWithoutTextScale",
                       [](json& j) {
                           auto& config = j["scenes"][0]["sources"][0]["configuration"];
                           config["contentType"] = "slides";
                           config["slidesResource"] = asJson(encodeRecord(SlidesResource::makeNew("Deck")));
                           config["slidesResource"].erase("textScale");
                       },
                       "scenes[0].sources[0].configuration.slidesResource.textScale: missing key"},
        MissingKeyCase{"rootNotObject", [](json& j) { j = json::array(); }, "(document): expected an object"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(DocumentCodec, UnparsableTextNamesTheDocument) {
    auto decoded = decodePreset("{\"id\": ");
    EXPECT_FALSE(decoded);
    EXPECT_EQ(decoded.error.rfind("(document): ", 0), 0u) << decoded.error;
}

TEST(DocumentCodec, InvalidUtf8IsRejected) {
    std::string text = minimalPresetJson().dump();
    auto pos = text.find("Minimal");
    text[pos] = static_cast<char>(0xC3);  // a lead byte followed by an ASCII byte
    auto decoded = decodePreset(text);
    EXPECT_FALSE(decoded);
    EXPECT_FALSE(decoded.error.empty());
}

TEST(DocumentCodec, DeepNestingIsRefusedWithoutParsing) {
    std::string text(100000, '[');
    auto decoded = decodePreset(text);
    EXPECT_FALSE(decoded);
    EXPECT_EQ(decoded.error, "(document): nesting deeper than 64 levels");
}

// ---------------------------------------------------------------- stored strings

TEST(DocumentCodec, SplitLayoutReadsFromItsStoredString) {
    json j = minimalPresetJson();
    j["scenes"][0]["layout"] = "Split 50/50";
    auto decoded = decode(j);
    ASSERT_TRUE(decoded) << decoded.error;
    EXPECT_EQ(decoded.value->scenes[0].layout, SceneLayout::splitHorizontal);
}

TEST(DocumentCodec, ArrowSurvivesAsUtf8) {
    Preset p = makeGoldenPreset();
    p.scenes[0].gradientDirection = GradientDirection::topLeftToBottomRight;
    const std::string text = encodePreset(p);
    EXPECT_NE(text.find("\"Diagonal \xE2\x86\x98\""), std::string::npos);
    auto decoded = decodePreset(text);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded.value->scenes[0].gradientDirection, GradientDirection::topLeftToBottomRight);
}

TEST(DocumentCodec, FadeScaleSurvivesWithPlusAndBlanks) {
    SceneTransitionConfig t{true, TransitionType::fadeScale, 1.1};
    const std::string text = encodeRecord(t);
    EXPECT_NE(text.find("\"Fade + Scale\""), std::string::npos);
    auto back = decodeRecord<SceneTransitionConfig>(text);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back.value, t);
}

TEST(DocumentCodec, EveryStoredStringIsExact) {
    EXPECT_EQ(toString(SceneLayout::splitHorizontal), "Split 50/50");
    EXPECT_EQ(toString(GradientDirection::topRightToBottomLeft), "Diagonal \xE2\x86\x99");
    EXPECT_EQ(toString(GradientDirection::rightToLeft), "Right to Left");
    EXPECT_EQ(toString(TransitionType::crossDissolve), "Cross Dissolve");
    EXPECT_EQ(toString(TransitionType::none), "None");
    EXPECT_EQ(toString(CameraShape::verticalRectangle), "verticalRectangle");
    EXPECT_EQ(toString(PresetTemplate::presentation), "Presentation");
    EXPECT_EQ(allCases<SceneLayout>().size(), 9u);
    EXPECT_EQ(allCases<TransitionType>().front(), TransitionType::none);
    EXPECT_EQ(allCases<GradientDirection>().back(), GradientDirection::radial);
}

// ---------------------------------------------------------------- writing rules

TEST(DocumentCodec, DefaultConfigurationLeavesOptionalKeysOut) {
    json j = asJson(encodeRecord(SourceConfiguration{}));
    for (const char* key : {"cameraDeviceId", "screenId", "windowId", "windowTitle", "windowOwner", "contentType",
                            "slidesResource"})
        EXPECT_FALSE(j.contains(key)) << key;
    EXPECT_EQ(j["position"], json::array({0, 0}));
    EXPECT_EQ(j["size"], json::array({300, 200}));
    EXPECT_EQ(j.size(), 34u);  // every required key, no optional one
}

TEST(DocumentCodec, ScreenIdZeroIsAValue) {
    SourceConfiguration c;
    c.screenId = 0;
    const std::string text = encodeRecord(c);
    EXPECT_NE(text.find("\"screenId\": 0,"), std::string::npos);
    auto back = decodeRecord<SourceConfiguration>(text);
    ASSERT_TRUE(back);
    ASSERT_TRUE(back.value->screenId);
    EXPECT_EQ(*back.value->screenId, 0u);
}

TEST(DocumentCodec, DoublesInShortestForm) {
    const std::string text = encodeRecord(SourceConfiguration{});
    EXPECT_NE(text.find("\"scale\": 0.8,"), std::string::npos);
    EXPECT_NE(text.find("\"shadowRadius\": 20,"), std::string::npos);
    EXPECT_NE(text.find("\"alpha\": 0.8"), std::string::npos);
    EXPECT_NE(encodeRecord(SceneTransitionConfig{}).find("\"duration\": 1.1"), std::string::npos);
    SourceConfiguration odd;
    odd.brightness = 0.1 + 0.2;  // 0.30000000000000004 must read back exactly
    auto back = decodeRecord<SourceConfiguration>(encodeRecord(odd));
    ASSERT_TRUE(back);
    EXPECT_EQ(back.value->brightness, 0.1 + 0.2);
}

TEST(DocumentCodec, SlashesAreEscapedAndBothFormsRead) {
    json j = minimalPresetJson();
    j["scenes"][0]["layout"] = "Split 50/50";
    auto decoded = decode(j);
    ASSERT_TRUE(decoded);
    const std::string text = encodePreset(*decoded.value);
    EXPECT_NE(text.find("\"Split 50\\/50\""), std::string::npos);
    EXPECT_EQ(text.find("50/50"), std::string::npos);
    auto again = decodePreset(text);
    ASSERT_TRUE(again);
    EXPECT_EQ(again.value->scenes[0].layout, SceneLayout::splitHorizontal);
}

TEST(DocumentCodec, KeysInDeclarationOrder) {
    const std::string text = encodeRecord(SceneTransitionConfig{});
    const auto enabled = text.find("\"enabled\"");
    const auto type = text.find("\"type\"");
    const auto duration = text.find("\"duration\"");
    EXPECT_LT(enabled, type);
    EXPECT_LT(type, duration);
    const std::string preset = encodePreset(makeGoldenPreset());
    EXPECT_LT(preset.find("\"hideProgramWhenPopout\""), preset.find("\"teleprompter\""));
    EXPECT_LT(preset.find("\"teleprompter\""), preset.find("\"sceneTransition\""));
}

TEST(DocumentCodec, PrettyPrinted) {
    const std::string text = encodeRecord(SceneTransitionConfig{});
    EXPECT_EQ(text, "{\n  \"enabled\": true,\n  \"type\": \"Fade\",\n  \"duration\": 1.1\n}");
}

TEST(DocumentCodec, UuidsUpperCaseOnWritingEitherCaseOnReading) {
    json j = minimalPresetJson();
    j["id"] = "0000abcd-0000-4000-8000-00000000beef";
    auto decoded = decode(j);
    ASSERT_TRUE(decoded) << decoded.error;
    EXPECT_EQ(decoded.value->id.toString(), "0000ABCD-0000-4000-8000-00000000BEEF");
    EXPECT_NE(encodePreset(*decoded.value).find("\"0000ABCD-0000-4000-8000-00000000BEEF\""), std::string::npos);
}

TEST(DocumentCodec, UnknownKeysIgnoredAndDropped) {
    json j = minimalPresetJson();
    j["futureFeature"] = {{"x", 1}};
    j["scenes"][0]["sources"][0]["configuration"]["chromaKey"] = true;
    auto decoded = decode(j);
    ASSERT_TRUE(decoded) << decoded.error;
    const std::string text = encodePreset(*decoded.value);
    EXPECT_EQ(text.find("futureFeature"), std::string::npos);
    EXPECT_EQ(text.find("chromaKey"), std::string::npos);
}

TEST(DocumentCodec, EmptyScenesArrayIsValid) {
    json j = minimalPresetJson();
    j["scenes"] = json::array();
    auto decoded = decode(j);
    ASSERT_TRUE(decoded) << decoded.error;
    EXPECT_TRUE(decoded.value->scenes.empty());
}

// ---------------------------------------------------------------- equality

TEST(DocumentRecords, ScenesCompareAndHashById) {
    StreamingScene a;
    a.name = "A";
    StreamingScene b = a;
    b.name = "B";
    b.sources.push_back(Source{});
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::hash<StreamingScene>{}(a), std::hash<StreamingScene>{}(b));
    StreamingScene c;
    EXPECT_NE(a, c);
}

TEST(DocumentRecords, PresetsAndDecksCompareById) {
    Preset a = makeGoldenPreset();
    Preset b = a;
    b.name = "Other";
    b.scenes.clear();
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::hash<Preset>{}(a), std::hash<Preset>{}(b));
    SlidesResource d1 = SlidesResource::makeNew("x");
    SlidesResource d2 = d1;
    d2.slides.clear();
    EXPECT_EQ(d1, d2);
}

TEST(DocumentRecords, ValueRecordsCompareFieldByField) {
    SceneTransitionConfig t1, t2;
    t2.duration = 1.2;
    EXPECT_NE(t1, t2);
    Slide s1;
    Slide s2 = s1;
    EXPECT_EQ(s1, s2);
    EXPECT_EQ(std::hash<Slide>{}(s1), std::hash<Slide>{}(s2));
    s2.content = "changed";
    EXPECT_NE(s1, s2);
    ProgressStep p1{fixedId(1), "a", false, 0};
    ProgressStep p2 = p1;
    p2.isCompleted = true;
    EXPECT_NE(p1, p2);
    BrandingConfig b1, b2;
    b2.logoImagePath = "/x.png";
    EXPECT_NE(b1, b2);
}

TEST(DocumentRecords, SelectedSourceOfDeletedSourceIsNothing) {
    StreamingScene scene;
    Source s;
    scene.sources.push_back(s);
    scene.selectedSourceId = s.id;
    ASSERT_NE(scene.selectedSource(), nullptr);
    EXPECT_EQ(scene.selectedSource()->id, s.id);
    scene.sources.clear();
    EXPECT_EQ(scene.selectedSource(), nullptr);
    scene.selectedSourceId.reset();
    EXPECT_EQ(scene.selectedSource(), nullptr);
}

TEST(DocumentRecords, NewSceneDefaults) {
    StreamingScene scene;
    EXPECT_EQ(scene.icon, "video.fill");
    EXPECT_TRUE(scene.brandingEnabled);
    EXPECT_EQ(scene.backgroundType, BackgroundType::gradient);
    ASSERT_EQ(scene.gradientColors.size(), 3u);
    EXPECT_EQ(scene.gradientColors[0], (CodableColor{0.1, 0.3, 0.5, 1}));
    EXPECT_EQ(scene.layout, SceneLayout::fullCamera);
}

TEST(DocumentRecords, GradientPresetTable) {
    const auto& rows = GradientPreset::presets();
    ASSERT_EQ(rows.size(), 15u);
    EXPECT_EQ(rows[0].name, "Midnight Blue");
    EXPECT_EQ(rows[4].name, "Ocean Breeze");
    EXPECT_EQ(rows[4].colors, StreamingScene{}.gradientColors);
    EXPECT_EQ(rows[6].direction, GradientDirection::topRightToBottomLeft);
    EXPECT_EQ(rows[9].direction, GradientDirection::bottomToTop);
    EXPECT_EQ(rows[14].name, "Royal Purple");
    std::unordered_set<Uuid> ids;
    for (const auto& row : rows) ids.insert(row.id);
    EXPECT_EQ(ids.size(), 15u);
    EXPECT_TRUE(rows[3].matches({{0.405, 0.15, 0.5, 1}, {0.8, 0.3, 0.4, 1}, {0.95, 0.5, 0.3, 1}}));
    EXPECT_FALSE(rows[3].matches({{0.42, 0.15, 0.5, 1}, {0.8, 0.3, 0.4, 1}, {0.95, 0.5, 0.3, 1}}));
    EXPECT_FALSE(rows[3].matches({{0.4, 0.15, 0.5, 1}, {0.8, 0.3, 0.4, 1}}));
}

// The picker's "at most 0.01 apart" is a comparison of doubles, and 0.01
// itself is not a binary fraction: it stands for the double nearest to it,
// 0x1.47ae147ae147bp-7. Pairs that are 0.01 apart in decimal, such as 0.5 and
// 0.51, are not that far apart once rounded (0.51 - 0.5 computes to
// 0.0100000000000000089), so they say nothing about the boundary. The pairs
// below differ by exactly that double: 0 and 0.01 trivially, and 2^-8 and
// 2^-8 + 0.01, whose sum needs no rounding (both lie below 2^-6, where a
// double still carries every bit of 0.01) and whose difference computes back
// to 0.01 exactly. A boundary pair matches; the next double beyond does not.
TEST(DocumentRecords, GradientRowMatchesAtExactlyOneHundredthApart) {
    constexpr double hundredth = 0.01;
    constexpr double low = 0.00390625;  // 2^-8
    const double high = low + hundredth;
    ASSERT_EQ(high, 0.01390625);        // the sum is exact ...
    ASSERT_EQ(high - low, hundredth);   // ... and so is the difference
    const GradientPreset row{Uuid::generate(), "Edge", {{0, low, 0.5, 1}, {1, 1, 1, 1}}, GradientDirection::radial};

    EXPECT_TRUE(row.matches({{hundredth, low, 0.5, 1}, {1, 1, 1, 1}}));        // red 0.01 above
    EXPECT_TRUE(row.matches({{0, high, 0.5, 1}, {1, 1, 1, 1}}));               // green 0.01 above
    EXPECT_TRUE(row.matches({{hundredth, high, 0.5, 1}, {1, 1, 1, 1}}));       // both at once
    const GradientPreset above{Uuid::generate(), "Edge", {{hundredth, high, 0.5, 1}}, GradientDirection::radial};
    EXPECT_TRUE(above.matches({{0, low, 0.5, 1}}));                            // and 0.01 below

    const double beyond = std::nextafter(hundredth, 1.0);
    EXPECT_FALSE(row.matches({{beyond, low, 0.5, 1}, {1, 1, 1, 1}}));
    const GradientPreset farAbove{Uuid::generate(), "Edge", {{beyond, low, 0.5, 1}}, GradientDirection::radial};
    EXPECT_FALSE(farAbove.matches({{0, low, 0.5, 1}}));
}

// ---------------------------------------------------------------- slides

TEST(SlidesDocument, EmptySlideObjectReadsWithDefaults) {
    auto slide = decodeRecord<Slide>(testing::readWholeFile(ORVANE_TEST_DATA_DIR "/slide_without_keys.json"));
    ASSERT_TRUE(slide) << slide.error;
    EXPECT_FALSE(slide.value->id.isNil());
    EXPECT_EQ(slide.value->title, "");
    EXPECT_EQ(slide.value->content, "");
    EXPECT_FALSE(slide.value->imageUrl);
    EXPECT_EQ(slide.value->imagePosition, ImagePosition::top);
    EXPECT_EQ(slide.value->imageSize, ImageSize::medium);
    EXPECT_EQ(slide.value->order, 0);
    EXPECT_EQ(slide.value->textScale, 1.0);
    EXPECT_EQ(slide.value->textAlignment, TextAlignment::leading);
    EXPECT_EQ(slide.value->backgroundColor, (CodableColor{0.1, 0.1, 0.12, 1}));
}

TEST(SlidesDocument, ReadingAKeylessSlideTwiceGivesTwoIds) {
    auto a = decodeRecord<Slide>("{}");
    auto b = decodeRecord<Slide>("{}");
    ASSERT_TRUE(a && b);
    EXPECT_NE(a.value->id, b.value->id);
}

TEST(SlidesDocument, SlideWithWrongTypeStillFails) {
    auto slide = decodeRecord<Slide>(R"({"order": "first"})");
    EXPECT_FALSE(slide);
    EXPECT_EQ(slide.error, "order: expected an integer");
}

TEST(SlidesDocument, SlideWithoutTextScaleReadsButDeckWithoutFails) {
    auto slide = decodeRecord<Slide>(R"({"title": "x"})");
    ASSERT_TRUE(slide);
    EXPECT_EQ(slide.value->textScale, 1.0);
    json deck = asJson(encodeRecord(SlidesResource::makeNew("Deck")));
    deck["slides"][0].erase("textScale");
    EXPECT_TRUE(decodeRecord<SlidesResource>(deck.dump()));
    deck.erase("textScale");
    auto failed = decodeRecord<SlidesResource>(deck.dump());
    EXPECT_FALSE(failed);
    EXPECT_EQ(failed.error, "textScale: missing key");
}

TEST(SlidesDocument, DeckWithAnEmptySlidesArrayIsValid) {
    json deck = asJson(encodeRecord(SlidesResource::makeNew("Deck")));
    deck["slides"] = json::array();
    auto back = decodeRecord<SlidesResource>(deck.dump());
    ASSERT_TRUE(back) << back.error;
    EXPECT_TRUE(back.value->slides.empty());
    EXPECT_EQ(back.value->title, "Deck");
    EXPECT_EQ(back.value->currentSlideIndex, 0);
    // And it writes back as it came.
    EXPECT_EQ(asJson(encodeRecord(*back.value)), deck);
}

TEST(SlidesDocument, CurrentSlideIndexIsNotCheckedAgainstTheSlides) {
    json deck = asJson(encodeRecord(SlidesResource::makeNew("Deck")));
    ASSERT_EQ(deck["slides"].size(), 1u);
    for (int index : {1, 7, -1}) {
        deck["currentSlideIndex"] = index;
        auto back = decodeRecord<SlidesResource>(deck.dump());
        ASSERT_TRUE(back) << index << ": " << back.error;
        EXPECT_EQ(back.value->currentSlideIndex, index);
        EXPECT_EQ(back.value->slides.size(), 1u);
    }
}

TEST(SlidesDocument, NewDeckDefaults) {
    SlidesResource deck = SlidesResource::makeNew("Slides 1");
    EXPECT_EQ(deck.title, "Slides 1");
    ASSERT_EQ(deck.slides.size(), 1u);
    EXPECT_EQ(deck.slides[0].title, "Welcome");
    EXPECT_EQ(deck.slides[0].content, "# Welcome to Slides\n\nStart creating your presentation!");
    EXPECT_EQ(deck.currentSlideIndex, 0);
    EXPECT_EQ(deck.accentColor, (CodableColor{0.6, 0.4, 0.9, 1}));
    EXPECT_EQ(deck.textAlignment, TextAlignment::leading);
}

// ---------------------------------------------------------------- round trips and golden files

template <typename T, typename Eq>
void expectRoundTrip(const T& record, Eq equal) {
    const std::string text = encodeRecord(record);
    auto back = decodeRecord<T>(text);
    ASSERT_TRUE(back) << back.error;
    EXPECT_TRUE(equal(record, *back.value)) << text;
    EXPECT_EQ(encodeRecord(*back.value), text);
}

TEST(DocumentRoundTrip, EveryRecordReadsBackFieldByField) {
    const Preset p = makeGoldenPreset();
    auto same = [](const auto& a, const auto& b) { return a == b; };
    auto deep = [](const auto& a, const auto& b) { return deepEqual(a, b); };
    expectRoundTrip(p, deep);
    for (const auto& scene : p.scenes) {
        expectRoundTrip(scene, deep);
        for (const auto& source : scene.sources) {
            expectRoundTrip(source, deep);
            expectRoundTrip(source.configuration, deep);
            if (source.configuration.slidesResource) {
                expectRoundTrip(*source.configuration.slidesResource, deep);
                for (const auto& slide : source.configuration.slidesResource->slides) expectRoundTrip(slide, same);
            }
        }
    }
    expectRoundTrip(*p.branding, same);
    expectRoundTrip(*p.progressBar, same);
    expectRoundTrip(p.progressBar->steps[0], same);
    expectRoundTrip(*p.teleprompter, same);
    expectRoundTrip(p.sceneTransition, same);
    expectRoundTrip(CodableColor{0.123456789, 1, 0, 0.5}, same);
}

TEST(DocumentRoundTrip, WritingTwiceIsByteIdentical) {
    const Preset p = makeGoldenPreset();
    const std::string first = encodePreset(p);
    auto back = decodePreset(first);
    ASSERT_TRUE(back);
    EXPECT_EQ(encodePreset(*back.value), first);
    EXPECT_EQ(encodePreset(p), first);
}

TEST(DocumentRoundTrip, FullPresetMatchesGoldenFile) {
    const std::string path = ORVANE_TEST_DATA_DIR "/full_preset.json";
    const std::string encoded = encodePreset(makeGoldenPreset());
    if (std::getenv("ORVANE_UPDATE_GOLDEN")) std::ofstream(path, std::ios::binary) << encoded;
    const std::string golden = testing::readWholeFile(path);
    EXPECT_EQ(encoded, golden);
    auto back = decodePreset(golden);
    ASSERT_TRUE(back) << back.error;
    EXPECT_TRUE(deepEqual(*back.value, makeGoldenPreset()));
    EXPECT_NE(golden.find("Diagonal \xE2\x86\x98"), std::string::npos);
    EXPECT_NE(golden.find("Fade + Scale"), std::string::npos);
}

TEST(DocumentRoundTrip, KeylessSlideWritesEveryFieldButImageUrl) {
    auto slide = decodeRecord<Slide>(testing::readWholeFile(ORVANE_TEST_DATA_DIR "/slide_without_keys.json"));
    ASSERT_TRUE(slide);
    std::string written = encodeRecord(*slide.value);
    const std::string id = slide.value->id.toString();
    written.replace(written.find(id), id.size(), "<fresh id>");
    EXPECT_EQ(written, testing::readWholeFile(ORVANE_TEST_DATA_DIR "/slide_without_keys.written.json"));
}

}  // namespace
}  // namespace orvane
