#include "remote/RemoteActionDispatch.h"

#include "remote/RecordingControl.h"
#include "remote/RemoteActions.h"

namespace orvane {

void applyRemoteAction(const RemoteAction& action, RemoteActions* session, RecordingControl* recorder) {
    using Kind = RemoteAction::Kind;
    if (action.kind == Kind::toggleRecording) {
        if (!recorder) return;
        // The recorder's state now, not the one the reply predicted from.
        if (recorder->isRecording())
            recorder->stopRecording();
        else
            recorder->startRecording();
        return;
    }
    if (!session) return;
    switch (action.kind) {
    case Kind::switchToScene: session->switchToScene(action.sceneIndex, action.sceneId); break;
    case Kind::updateLive: session->updateLive(); break;
    case Kind::setDrawingMode: session->setDrawingModeEnabled(action.value); break;
    case Kind::setSceneProgressBar: session->setSceneProgressBarEnabled(action.sceneId, action.value); break;
    case Kind::setSceneBranding: session->setSceneBrandingEnabled(action.sceneId, action.value); break;
    case Kind::toggleBlurMode: session->toggleBlurMode(); break;
    case Kind::toggleRecording: break;  // handled above
    }
}

}  // namespace orvane
