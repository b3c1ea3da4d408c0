#pragma once

#include "document/BrandingConfig.h"
#include "document/ProgressBarConfig.h"
#include "document/StreamingScene.h"

namespace orvane {

class FrameSource;

// Everything a composition is drawn from, as plain values owned by the
// caller for the duration of one render. Absent things are null.
struct SceneRenderInputs {
    const StreamingScene* scene = nullptr;
    // The current preset's branding and progress bar; the scene's own
    // switches decide whether they show.
    const BrandingConfig* presetBranding = nullptr;
    const ProgressBarConfig* progressBar = nullptr;
    // Only the pop-out window and the recording pass true: blur shows there.
    bool isProgram = false;
    bool isBlurModeActive = false;
    // The session's sceneUpdateTimestamp (seconds since 1970); part of the
    // composition's identity, so an edit rebuilds it.
    double sceneUpdateTimestamp = 0;
    const FrameSource* frames = nullptr;
    // Whether the host builds the composition anew whenever its identity
    // changes, as the stages do: every saved edit is then a cut. A host that
    // updates its composition in place (the pop-out window) passes false,
    // and a change of the scene's sources then eases from the old picture
    // to the new over SceneRenderer::kSourceEase seconds.
    bool rebuildsOnIdentityChange = true;
};

}  // namespace orvane
