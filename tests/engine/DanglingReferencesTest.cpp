// Presets whose references lead nowhere: an active scene id that names no
// scene, a logo file that is gone, a slide picture that is gone, and a
// preset file cut off in the middle of its slide deck. The session opens
// what can be read, the composition draws what is there, and nothing is
// rewritten that could not be read.

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "composition/SceneRenderer.h"
#include "document/DocumentCodec.h"
#include "document/PresetTemplates.h"
#include "document/SourceFactory.h"
#include "engine/StreamManager.h"
#include "support/LogCapture.h"
#include "support/TestHome.h"

namespace orvane {
namespace dangling_references_test {

namespace fs = std::filesystem;
using test::LogCapture;
using test::TestHome;

std::string readBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void writeBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

// The scene with the preset's branding, as a stage draws it.
QImage render(const StreamingScene& scene, const std::optional<BrandingConfig>& branding) {
    QImage image(1280, 720, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    SceneRenderer renderer;
    SceneRenderInputs inputs;
    inputs.scene = &scene;
    inputs.presetBranding = branding ? &*branding : nullptr;
    renderer.render(painter, QSizeF(image.size()), inputs, 0.0);
    painter.end();
    return image;
}

class DanglingReferencesTest : public ::testing::Test {
protected:
    void SetUp() override {
        // A logo that was copied into the logos directory and is gone since.
        const fs::path source = home.storage().presetsDirectory().parent_path() / "logo.png";
        QImage logo(64, 64, QImage::Format_ARGB32);
        logo.fill(QColor(255, 0, 0));
        ASSERT_TRUE(logo.save(QString::fromStdString(source.string())));
        std::optional<std::string> copied;
        {
            LogCapture quiet;
            copied = home.storage().copyLogoToAppDirectory(source.string());
        }
        ASSERT_TRUE(copied);
        logoPath = *copied;
        fs::remove(logoPath);
        fs::remove(source);

        // A slide whose picture was a file that is gone.
        goneImage = (home.storage().presetsDirectory().parent_path() / "slide-picture.png").string();

        preset = createPreset("Dangling", PresetTemplate::custom);
        preset.scenes.clear();
        StreamingScene slides = makeScene("Slides scene");
        slides.layout = SceneLayout::fullScreen;
        SourceFactory::addSlidesSource(slides);
        Slide& page = slides.sources.back().configuration.slidesResource->slides.at(0);
        page.content = "# Hello\n\nThe picture is gone.";
        page.imageUrl = goneImage;
        page.imagePosition = ImagePosition::top;
        preset.scenes.push_back(slides);
        preset.scenes.push_back(makeScene("Second"));
        preset.activeSceneId = Uuid::generate();  // names no scene
        BrandingConfig branding;
        branding.enabled = true;
        branding.text = "Brand";
        branding.logoImagePath = logoPath;
        preset.branding = branding;
        home.savePreset(preset, 60);

        // The newest file: a preset cut off in the middle of its deck, as an
        // editor or a broken copy might leave it.
        Preset cut = createPreset("Cut deck", PresetTemplate::custom);
        StreamingScene scene = makeScene("Deck");
        SourceFactory::addSlidesSource(scene);
        cut.scenes = {scene};
        cut.activeSceneId = scene.id;
        const std::string whole = encodePreset(cut);
        const auto deck = whole.find("\"slidesResource\"");
        ASSERT_NE(deck, std::string::npos);
        cutBytes = whole.substr(0, deck + 40);
        cutFile = home.storage().fileFor(cut);
        writeBytes(cutFile, cutBytes);
    }

    TestHome home;
    Preset preset;
    std::string logoPath;
    std::string goneImage;
    fs::path cutFile;
    std::string cutBytes;
};

TEST_F(DanglingReferencesTest, TheSessionOpensWhatCanBeReadAndLeavesTheRestAsItIs) {
    LogCapture log;
    std::unique_ptr<StreamManager> session = home.startSession();
    const auto lines = log.sessionLines();

    // The cut file is skipped, with its name and the reason, and kept.
    ASSERT_EQ(log.count("❌ Error loading preset from " + cutFile.filename().string() + ": "), 1);
    EXPECT_EQ(log.count("❌"), 1);
    EXPECT_EQ(readBytes(cutFile), cutBytes);
    // The readable one opens on its first scene, as the active one is gone.
    ASSERT_TRUE(session->currentPreset());
    EXPECT_EQ(session->currentPreset()->name, "Dangling");
    EXPECT_EQ(log.count("✅ Loaded first available preset: Dangling"), 1);
    EXPECT_EQ(log.count("✅ Using first scene: Slides scene"), 1);
    ASSERT_TRUE(session->activeScene());
    EXPECT_EQ(session->activeScene()->name, "Slides scene");
    ASSERT_TRUE(session->programScene());
    // The document keeps its references as they were.
    EXPECT_EQ(session->currentPreset()->activeSceneId, preset.activeSceneId);
    EXPECT_EQ(session->currentPreset()->branding->logoImagePath, logoPath);

    // The session goes on: a switch to the other scene and back.
    EXPECT_TRUE(session->switchToSceneAt(1));
    EXPECT_EQ(session->activeScene()->name, "Second");
    EXPECT_TRUE(session->switchToSceneAt(0));
    EXPECT_EQ(readBytes(cutFile), cutBytes);
}

TEST_F(DanglingReferencesTest, MissingPicturesDrawAsIfThereWereNone) {
    std::unique_ptr<StreamManager> session;
    {
        LogCapture quiet;
        session = home.startSession();
    }
    ASSERT_TRUE(session->activeScene() && session->currentPreset());
    const StreamingScene shown = *session->activeScene();
    const std::optional<BrandingConfig> branding = session->currentPreset()->branding;
    const QImage drawn = render(shown, branding);

    // The gone logo leaves the plate with its text alone, exactly as a
    // plate without a logo.
    BrandingConfig withoutLogo = *branding;
    withoutLogo.logoImagePath.reset();
    StreamingScene withoutPicture = shown;
    withoutPicture.sources.back().configuration.slidesResource->slides.at(0).imageUrl.reset();
    const QImage expected = render(withoutPicture, withoutLogo);
    EXPECT_EQ(drawn, expected);

    // Both would show if they were there: the comparison above sees them.
    QImage picture(200, 120, QImage::Format_ARGB32);
    picture.fill(QColor(0, 200, 0));
    ASSERT_TRUE(picture.save(QString::fromStdString(goneImage)));
    EXPECT_NE(render(shown, withoutLogo), expected) << "a slide picture that is there is drawn";
    QImage logo(64, 64, QImage::Format_ARGB32);
    logo.fill(QColor(255, 0, 0));
    ASSERT_TRUE(logo.save(QString::fromStdString(logoPath)));
    EXPECT_NE(render(withoutPicture, branding), expected) << "a logo that is there is drawn";
    // And the plate itself is drawn: without branding the picture differs.
    EXPECT_NE(render(withoutPicture, std::nullopt), expected);
}

}  // namespace
}  // namespace orvane
