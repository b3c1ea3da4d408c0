#include "document/SourceFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

#include "document/DocumentCodec.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace source_factory_test {

using SourceFactory::addCameraSource;
using SourceFactory::addScreenSource;
using SourceFactory::addSlidesSource;
using SourceFactory::addWindowSource;

const CameraChoice camera{"/dev/video0", "Integrated Camera: Integrated C"};
const DisplayChoice display{67, "Main Display"};
const WindowChoice window{0x4a00007, "Quarterly Report — Editor", "Editor"};

// The configuration with the fields a path sets put back to their defaults
// must be the default configuration exactly: nothing else was touched.
void expectOnlyTheseFieldsSet(SourceConfiguration config) {
    config.cameraDeviceId.reset();
    config.screenId.reset();
    config.windowId.reset();
    config.windowTitle.reset();
    config.windowOwner.reset();
    config.contentType.reset();
    config.slidesResource.reset();
    EXPECT_EQ(encodeRecord(config), encodeRecord(SourceConfiguration{}));
}

void removeSourceNamed(StreamingScene& scene, const std::string& name) {
    const auto before = scene.sources.size();
    std::erase_if(scene.sources, [&](const Source& s) { return s.name == name; });
    ASSERT_EQ(scene.sources.size(), before - 1) << name;
}

TEST(SourceFactory, CameraTakesTheDeviceNameAndIdentifier) {
    StreamingScene scene = makeScene("Scene");
    const Uuid id = addCameraSource(scene, camera);
    ASSERT_EQ(scene.sources.size(), 1u);
    const Source& source = scene.sources.back();
    EXPECT_EQ(source.id, id);
    EXPECT_EQ(source.type, SourceType::camera);
    EXPECT_EQ(source.name, camera.name);
    EXPECT_EQ(source.configuration.cameraDeviceId, camera.deviceId);
    expectOnlyTheseFieldsSet(source.configuration);
    EXPECT_EQ(scene.selectedSourceId, id);
    EXPECT_EQ(scene.selectedSource(), &source);
}

TEST(SourceFactory, ScreenTakesTheDisplayNameAndIdentifier) {
    StreamingScene scene = makeScene("Scene");
    const Uuid id = addScreenSource(scene, display);
    const Source& source = scene.sources.back();
    EXPECT_EQ(source.id, id);
    EXPECT_EQ(source.type, SourceType::screen);
    EXPECT_EQ(source.name, "Main Display");
    EXPECT_EQ(source.configuration.screenId, 67u);
    expectOnlyTheseFieldsSet(source.configuration);
    EXPECT_EQ(scene.selectedSourceId, id);
}

TEST(SourceFactory, ScreenIdZeroIsKeptAsAValue) {
    StreamingScene scene = makeScene("Scene");
    addScreenSource(scene, {0, "Display 0"});
    ASSERT_TRUE(scene.sources.back().configuration.screenId);
    EXPECT_EQ(*scene.sources.back().configuration.screenId, 0u);
}

TEST(SourceFactory, WindowTakesTheTitleAsNameAndKeepsIdTitleAndOwner) {
    StreamingScene scene = makeScene("Scene");
    const Uuid id = addWindowSource(scene, window);
    const Source& source = scene.sources.back();
    EXPECT_EQ(source.id, id);
    EXPECT_EQ(source.type, SourceType::window);
    EXPECT_EQ(source.name, window.title);
    EXPECT_EQ(source.configuration.windowId, window.id);
    EXPECT_EQ(source.configuration.windowTitle, window.title);
    EXPECT_EQ(source.configuration.windowOwner, window.owner);
    expectOnlyTheseFieldsSet(source.configuration);
    EXPECT_EQ(scene.selectedSourceId, id);
}

TEST(SourceFactory, SlidesSourceCarriesANewDeckWithTheSameTitle) {
    StreamingScene scene = makeScene("Scene");
    const Uuid id = addSlidesSource(scene);
    const Source& source = scene.sources.back();
    EXPECT_EQ(source.id, id);
    EXPECT_EQ(source.type, SourceType::content);
    EXPECT_EQ(source.name, "Slides 1");
    EXPECT_EQ(source.configuration.contentType, ContentType::slides);
    ASSERT_TRUE(source.configuration.slidesResource);
    EXPECT_EQ(source.configuration.slidesResource->title, "Slides 1");
    expectOnlyTheseFieldsSet(source.configuration);
    EXPECT_EQ(scene.selectedSourceId, id);
}

TEST(SourceFactory, ANewDeckHasOneWelcomeSlideAndTheDefaults) {
    StreamingScene scene = makeScene("Scene");
    addSlidesSource(scene);
    const SlidesResource& deck = *scene.sources.back().configuration.slidesResource;
    EXPECT_FALSE(deck.id.isNil());
    EXPECT_EQ(deck.currentSlideIndex, 0);
    EXPECT_EQ(deck.backgroundColor, (CodableColor{0.1, 0.1, 0.12, 1}));
    EXPECT_EQ(deck.textColor, (CodableColor{1, 1, 1, 1}));
    EXPECT_EQ(deck.accentColor, (CodableColor{0.6, 0.4, 0.9, 1}));
    EXPECT_EQ(deck.textScale, 1.0);
    EXPECT_EQ(deck.textAlignment, TextAlignment::leading);

    ASSERT_EQ(deck.slides.size(), 1u);
    const Slide& slide = deck.slides[0];
    EXPECT_FALSE(slide.id.isNil());
    EXPECT_EQ(slide.title, "Welcome");
    EXPECT_EQ(slide.content, "# Welcome to Slides\n\nStart creating your presentation!");
    EXPECT_FALSE(slide.imageUrl);
    EXPECT_EQ(slide.imagePosition, ImagePosition::top);
    EXPECT_EQ(slide.imageSize, ImageSize::medium);
    EXPECT_EQ(slide.order, 0);
    EXPECT_EQ(slide.textScale, 1.0);
    EXPECT_EQ(slide.textAlignment, TextAlignment::leading);
    EXPECT_EQ(slide.backgroundColor, (CodableColor{0.1, 0.1, 0.12, 1}));

    // Each deck and slide is its own. (Adding may move the sources, so the
    // first deck is copied before.)
    const SlidesResource first = deck;
    addSlidesSource(scene);
    const SlidesResource& second = *scene.sources.back().configuration.slidesResource;
    EXPECT_NE(second.id, first.id);
    EXPECT_NE(second.slides.at(0).id, first.slides.at(0).id);
}

TEST(SourceFactory, EveryPathAppendsWithAFreshIdAndSelectsTheNewSource) {
    StreamingScene scene = makeScene("Scene");
    std::vector<Uuid> ids{addScreenSource(scene, display), addWindowSource(scene, window),
                          addCameraSource(scene, camera), addSlidesSource(scene)};
    ASSERT_EQ(scene.sources.size(), 4u);
    for (std::size_t i = 0; i < ids.size(); ++i) EXPECT_EQ(scene.sources[i].id, ids[i]);
    EXPECT_EQ(std::set<Uuid>(ids.begin(), ids.end()).size(), 4u);
    EXPECT_EQ(scene.selectedSourceId, ids.back());
    EXPECT_EQ(scene.sources[0].type, SourceType::screen);
    EXPECT_EQ(scene.sources[3].type, SourceType::content);
}

TEST(SourceFactory, ACameraJoiningAWindowSceneInFullCameraMovesToPipBottomRight) {
    StreamingScene scene = makeScene("Scene");
    addWindowSource(scene, window);
    ASSERT_EQ(scene.layout, SceneLayout::fullCamera);
    addCameraSource(scene, camera);
    EXPECT_EQ(scene.layout, SceneLayout::pipBottomRight);
    EXPECT_EQ(toString(scene.layout), "PIP Bottom Right");
}

TEST(SourceFactory, ACameraJoiningAScreenSceneInFullCameraMovesToPipBottomRight) {
    StreamingScene scene = makeScene("Scene");
    addScreenSource(scene, display);
    addCameraSource(scene, camera);
    EXPECT_EQ(scene.layout, SceneLayout::pipBottomRight);
}

TEST(SourceFactory, ACameraJoiningAFullCameraSceneWithoutCaptureKeepsTheLayout) {
    StreamingScene onlyCamera = makeScene("Camera");
    addCameraSource(onlyCamera, camera);
    addCameraSource(onlyCamera, {"/dev/video2", "USB Camera"});
    EXPECT_EQ(onlyCamera.layout, SceneLayout::fullCamera);

    StreamingScene withSlides = makeScene("Slides");
    addSlidesSource(withSlides);
    addCameraSource(withSlides, camera);
    EXPECT_EQ(withSlides.layout, SceneLayout::fullCamera);

    StreamingScene empty = makeScene("Empty");
    addCameraSource(empty, camera);
    EXPECT_EQ(empty.layout, SceneLayout::fullCamera);
}

TEST(SourceFactory, OnlyACameraChangesTheLayout) {
    StreamingScene scene = makeScene("Scene");
    addCameraSource(scene, camera);
    addWindowSource(scene, window);
    addScreenSource(scene, display);
    addSlidesSource(scene);
    EXPECT_EQ(scene.layout, SceneLayout::fullCamera);
}

// Parameterised by the stored string, which also names the test.
class CameraJoiningOtherLayouts : public ::testing::TestWithParam<std::string> {};

TEST_P(CameraJoiningOtherLayouts, TheLayoutStays) {
    const auto layout = enumFromString<SceneLayout>(GetParam());
    ASSERT_TRUE(layout) << GetParam();
    for (bool screen : {false, true}) {
        StreamingScene scene = makeScene("Scene");
        scene.layout = *layout;
        if (screen)
            addScreenSource(scene, display);
        else
            addWindowSource(scene, window);
        addCameraSource(scene, camera);
        EXPECT_EQ(scene.layout, *layout) << (screen ? "screen" : "window");
    }
}

std::vector<std::string> layoutsOtherThanFullCamera() {
    std::vector<std::string> out;
    for (SceneLayout layout : allCases<SceneLayout>())
        if (layout != SceneLayout::fullCamera) out.emplace_back(toString(layout));
    return out;
}

INSTANTIATE_TEST_SUITE_P(AllButFullCamera, CameraJoiningOtherLayouts,
                         ::testing::ValuesIn(layoutsOtherThanFullCamera()), [](const auto& info) {
                             std::string name;
                             for (char c : info.param)
                                 if (std::isalnum(static_cast<unsigned char>(c))) name += c;
                             return name;
                         });

TEST(SourceFactory, TheSecondSlidesSourceIsNamedSlides2) {
    StreamingScene scene = makeScene("Scene");
    addSlidesSource(scene);
    addSlidesSource(scene);
    ASSERT_EQ(scene.sources.size(), 2u);
    EXPECT_EQ(scene.sources[1].name, "Slides 2");
    EXPECT_EQ(scene.sources[1].configuration.slidesResource->title, "Slides 2");
}

TEST(SourceFactory, SlidesAreCountedOverSlidesSourcesOnly) {
    StreamingScene scene = makeScene("Scene");
    addCameraSource(scene, camera);
    addWindowSource(scene, window);
    Source text;
    text.type = SourceType::content;
    text.name = "Slides 7";  // a name proves nothing; only type and content type count
    text.configuration.contentType = ContentType::text;
    scene.sources.push_back(text);
    Source untyped;
    untyped.type = SourceType::content;
    untyped.name = "Untyped";
    scene.sources.push_back(untyped);

    EXPECT_EQ(SourceFactory::countSlidesSources(scene), 0);
    addSlidesSource(scene);
    EXPECT_EQ(scene.sources.back().name, "Slides 1");
    addSlidesSource(scene);
    EXPECT_EQ(scene.sources.back().name, "Slides 2");
    EXPECT_EQ(SourceFactory::countSlidesSources(scene), 2);
}

TEST(SourceFactory, AfterTheFirstSlidesSourceIsRemovedTheNextIsSlides2AgainWhileOneRemains) {
    StreamingScene scene = makeScene("Scene");
    addSlidesSource(scene);
    addSlidesSource(scene);
    removeSourceNamed(scene, "Slides 1");
    EXPECT_EQ(SourceFactory::nextSlidesSourceName(scene), "Slides 2");
    addSlidesSource(scene);
    EXPECT_EQ(scene.sources.back().name, "Slides 2");
    // Names may repeat: two sources called "Slides 2", told apart by id.
    ASSERT_EQ(scene.sources.size(), 2u);
    EXPECT_EQ(scene.sources[0].name, scene.sources[1].name);
    EXPECT_NE(scene.sources[0].id, scene.sources[1].id);
}

TEST(SourceFactory, WithNoSlidesSourceLeftTheNextIsSlides1) {
    StreamingScene scene = makeScene("Scene");
    addSlidesSource(scene);
    removeSourceNamed(scene, "Slides 1");
    addSlidesSource(scene);
    EXPECT_EQ(scene.sources.back().name, "Slides 1");
}

TEST(SourceFactory, NewSourcesSurviveTheFile) {
    Preset preset = createPreset("Show", PresetTemplate::custom);
    StreamingScene& scene = preset.scenes[0];
    addWindowSource(scene, window);
    addCameraSource(scene, camera);
    addScreenSource(scene, {0, "Display 0"});
    addSlidesSource(scene);

    const auto decoded = decodePreset(encodePreset(preset));
    ASSERT_TRUE(decoded) << decoded.error;
    const StreamingScene& back = decoded.value->scenes.at(0);
    EXPECT_EQ(back.layout, SceneLayout::pipBottomRight);
    ASSERT_EQ(back.sources.size(), 4u);
    EXPECT_EQ(back.selectedSourceId, scene.sources[3].id);
    EXPECT_EQ(back.sources[0].configuration.windowOwner, "Editor");
    EXPECT_EQ(back.sources[1].configuration.cameraDeviceId, "/dev/video0");
    EXPECT_EQ(back.sources[2].configuration.screenId, 0u);
    ASSERT_TRUE(back.sources[3].configuration.slidesResource);
    EXPECT_EQ(back.sources[3].configuration.slidesResource->slides.at(0).title, "Welcome");
}

}  // namespace
}  // namespace orvane
