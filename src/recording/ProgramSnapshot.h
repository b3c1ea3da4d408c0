#pragma once

#include <memory>
#include <optional>

#include "composition/DrawingOverlay.h"
#include "document/BrandingConfig.h"
#include "document/ProgressBarConfig.h"
#include "document/StreamingScene.h"

namespace orvane {

class FrameSource;

// Everything the recorder's thread draws a frame from, copied from the
// session on the main thread whenever one of its parts changes. Immutable
// once handed over.
struct ProgramSnapshot {
    std::optional<StreamingScene> programScene;
    std::optional<BrandingConfig> branding;
    std::optional<ProgressBarConfig> progressBar;
    bool isBlurModeActive = false;
    bool isDrawingModeEnabled = false;
    DrawingLayers drawing;
    DrawingSelection drawingSelection;
    // Live pictures; must answer from any thread. May be null.
    std::shared_ptr<const FrameSource> frames;
};

}  // namespace orvane
