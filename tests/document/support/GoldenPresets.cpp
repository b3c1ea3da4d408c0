#include "support/GoldenPresets.h"

#include <cstdio>
#include <fstream>
#include <sstream>

namespace orvane::testing {

Uuid fixedId(unsigned n) {
    char text[37];
    std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012X", n);
    return *Uuid::parse(text);
}

namespace {

Source cameraSource(Uuid id) {
    Source s;
    s.id = id;
    s.type = SourceType::camera;
    s.name = "FaceTime HD Camera";
    s.configuration.cameraDeviceId = "/dev/video0";
    s.configuration.cameraShape = CameraShape::circle;
    s.configuration.cameraSize = CameraOverlaySize::large;
    s.configuration.cameraBrightness = -0.15;
    s.configuration.cameraContrast = 1.25;
    return s;
}

Source screenSource(Uuid id) {
    Source s;
    s.id = id;
    s.type = SourceType::screen;
    s.name = "Main Display";
    s.configuration.screenId = 0;  // zero is a value, not absence
    s.configuration.borderEnabled = true;
    s.configuration.scale = 0.75;
    s.configuration.horizontalOffset = -12.5;
    return s;
}

Source windowSource(Uuid id) {
    Source s;
    s.id = id;
    s.type = SourceType::window;
    s.name = "Terminal \u2014 ~/src";
    s.configuration.windowId = 4194311;
    s.configuration.windowTitle = "Terminal \u2014 ~/src";
    s.configuration.windowOwner = "xterm";
    s.configuration.position = {12.25, -3};
    s.configuration.size = {640, 360.5};
    return s;
}

Source slidesSource(Uuid id, Uuid deckId, Uuid slideA, Uuid slideB) {
    Source s;
    s.id = id;
    s.type = SourceType::content;
    s.name = "Slides 1";
    s.configuration.contentType = ContentType::slides;
    SlidesResource deck = SlidesResource::makeNew("Slides 1");
    deck.id = deckId;
    deck.slides[0].id = slideA;
    Slide second;
    second.id = slideB;
    second.title = "Agenda";
    second.content = "- one\n- two";
    second.imageUrl = "/home/presenter/.local/share/OrvaneUI/Images/chart.png";
    second.imagePosition = ImagePosition::right;
    second.imageSize = ImageSize::full;
    second.order = 1;
    deck.slides.push_back(second);
    deck.currentSlideIndex = 1;
    s.configuration.slidesResource = deck;
    return s;
}

}  // namespace

Preset makeGoldenPreset() {
    Preset p;
    p.id = fixedId(1);
    p.name = "Launch \"Keynote\" / Q3";

    StreamingScene a;
    a.id = fixedId(10);
    a.name = "Screen + Webcam";
    a.sources = {screenSource(fixedId(11)), cameraSource(fixedId(12))};
    a.selectedSourceId = fixedId(12);
    a.layout = SceneLayout::splitHorizontal;
    a.gradientDirection = GradientDirection::topLeftToBottomRight;

    StreamingScene b;
    b.id = fixedId(20);
    b.name = "Window";
    b.icon = "display";
    b.sources = {windowSource(fixedId(21))};
    b.backgroundType = BackgroundType::solid;
    b.backgroundColor = {0.2, 0.4, 0.6, 1};
    b.cinematicZoomEnabled = true;
    b.brandingEnabled = false;

    StreamingScene c;
    c.id = fixedId(30);
    c.name = "Slides Only";
    c.sources = {slidesSource(fixedId(31), fixedId(32), fixedId(33), fixedId(34))};
    c.gradientColors = {{0.4, 0.15, 0.5, 1}, {0.8, 0.3, 0.4, 1}};
    c.gradientDirection = GradientDirection::topRightToBottomLeft;
    c.layout = SceneLayout::pipTopLeft;

    p.scenes = {a, b, c};
    p.activeSceneId = fixedId(20);

    BrandingConfig branding;
    branding.enabled = true;
    branding.text = "Orvane Live";
    branding.logoImagePath = "/home/presenter/.local/share/OrvaneUI/Logos/00000000-0000-4000-8000-0000000000AA.png";
    branding.position = BrandingPosition::topLeft;
    branding.opacity = 0.85;
    p.branding = branding;

    ProgressBarConfig progress;
    progress.enabled = true;
    for (int i = 0; i < 3; ++i)
        progress.steps.push_back(ProgressStep{fixedId(40 + i), "Step " + std::to_string(i + 1), i == 0, 2 - i});
    progress.orientation = ProgressBarOrientation::vertical;
    progress.position = ProgressBarPosition::left;
    p.progressBar = progress;

    TeleprompterConfig prompter;
    prompter.enabled = true;
    prompter.text = "Welcome everyone.\nToday: the \u00FCbersicht.";
    prompter.position = TeleprompterPosition::floating;
    prompter.scrollSpeed = 1.5;
    p.teleprompter = prompter;

    p.hideProgramWhenPopout = false;
    p.sceneTransition = {true, TransitionType::fadeScale, 0.6};
    return p;
}

std::string readWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

}  // namespace orvane::testing
