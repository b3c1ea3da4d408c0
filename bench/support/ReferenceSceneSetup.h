#pragma once

#include <QColor>
#include <QSize>
#include <QString>

#include "document/BrandingConfig.h"
#include "document/ProgressBarConfig.h"
#include "document/StreamingScene.h"
#include "document/Uuid.h"

namespace orvane {

// The scene the benchmarks measure: a gradient background, one 1920 by 1080
// screen frame at scale 0.8 with border, shadow and rounded corners, a
// circle picture-in-picture camera, branding with logo and text, and a
// six-step progress bar with three steps done. Only the arrangement: each
// benchmark feeds the screen and camera sources (by their ids) its own way.
class ReferenceSceneSetup {
public:
    static constexpr QSize kScreenSize{1920, 1080};
    static constexpr QSize kCameraSize{1280, 720};

    // logoPath: a picture file for the branding's logo (see writeLogo).
    explicit ReferenceSceneSetup(const QString& logoPath);

    // Writes the logo picture to `path`; false when it cannot be saved.
    static bool writeLogo(const QString& path);

    StreamingScene scene;
    BrandingConfig branding;
    ProgressBarConfig progress;
    Uuid screenId;  // scene.sources[0]
    Uuid cameraId;  // scene.sources[1]
};

}  // namespace orvane
