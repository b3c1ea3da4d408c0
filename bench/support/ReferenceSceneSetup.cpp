#include "ReferenceSceneSetup.h"

#include <string>

#include "composition/TestFrameSource.h"

namespace orvane {

ReferenceSceneSetup::ReferenceSceneSetup(const QString& logoPath) {
    scene.name = "Reference";
    scene.layout = SceneLayout::pipBottomRight;
    scene.backgroundType = BackgroundType::gradient;
    scene.gradientDirection = GradientDirection::topLeftToBottomRight;
    Source screen;
    screen.type = SourceType::screen;
    screen.name = "Screen";
    screen.configuration.screenId = 1;
    screen.configuration.scale = 0.8;
    screen.configuration.borderEnabled = true;
    screen.configuration.borderGlow = 6;
    screen.configuration.shadowEnabled = true;
    screen.configuration.borderRadius = 12;
    Source camera;
    camera.type = SourceType::camera;
    camera.name = "Camera";
    camera.configuration.cameraShape = CameraShape::circle;
    scene.sources = {screen, camera};
    screenId = screen.id;
    cameraId = camera.id;

    branding.enabled = true;
    branding.text = "OrvaneUI Live";
    branding.logoImagePath = logoPath.toStdString();
    progress.enabled = true;
    for (int i = 0; i < 6; ++i) {
        ProgressStep step;
        step.title = "Step " + std::to_string(i + 1);
        step.order = i;
        step.isCompleted = i < 3;
        progress.steps.push_back(step);
    }
}

bool ReferenceSceneSetup::writeLogo(const QString& path) {
    return TestFrameSource::patternFrame(QSize(256, 256), QColor(200, 120, 30)).save(path);
}

}  // namespace orvane
