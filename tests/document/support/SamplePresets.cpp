#include "support/SamplePresets.h"

#include <string>

#include "document/SourceFactory.h"

namespace orvane::test {

Preset makeFullPreset(int sceneCount, std::size_t scriptBytes) {
    Preset preset;
    preset.name = "Weekly Show / Episode 12";
    for (int i = 0; i < sceneCount; ++i) {
        StreamingScene scene;
        scene.name = "Scene " + std::to_string(i + 1);
        scene.icon = i % 2 ? "display" : "video.fill";
        scene.layout = SceneLayout::splitHorizontal;
        scene.gradientDirection = GradientDirection::topLeftToBottomRight;
        SourceFactory::addWindowSource(scene, {static_cast<std::uint32_t>(0x3a00001 + i), "Slides.pdf — Viewer",
                                               "Document Viewer"});
        SourceFactory::addCameraSource(scene, {"/dev/video0", "Integrated Camera"});
        SourceFactory::addSlidesSource(scene);
        auto& deck = *scene.sources.back().configuration.slidesResource;
        for (int s = 1; s <= 3; ++s) {
            Slide slide;
            slide.title = "Point " + std::to_string(s);
            slide.content = "## Point " + std::to_string(s) + "\n\n- first\n- second\n\n**bold** and *italic*";
            slide.order = s;
            if (s == 2) slide.imageUrl = "/home/presenter/.local/share/OrvaneUI/Slides/chart.png";
            deck.slides.push_back(slide);
        }
        scene.selectedSourceId = scene.sources[1].id;
        preset.scenes.push_back(std::move(scene));
    }
    if (!preset.scenes.empty()) preset.activeSceneId = preset.scenes[preset.scenes.size() / 2].id;

    BrandingConfig branding;
    branding.enabled = true;
    branding.text = "Orvane Live";
    branding.logoImagePath = "/home/presenter/.local/share/OrvaneUI/Logos/6F1C2E0A-9B7D-4C3E-8A51-2D4F6B8C0E1A.png";
    preset.branding = branding;

    ProgressBarConfig progress;
    progress.enabled = true;
    for (int s = 0; s < 5; ++s) progress.steps.push_back({Uuid::generate(), "Step " + std::to_string(s + 1), s < 2, s});
    preset.progressBar = progress;

    TeleprompterConfig teleprompter;
    teleprompter.enabled = true;
    teleprompter.text = "Good evening and welcome.\nToday we look at three things.\n";
    while (teleprompter.text.size() < scriptBytes) teleprompter.text += "And one more line of the script to read.\n";
    preset.teleprompter = teleprompter;

    preset.sceneTransition = {true, TransitionType::fadeScale, 0.75};
    return preset;
}

}  // namespace orvane::test
