#pragma once

#include "remote/RemoteAction.h"

namespace orvane {

class RecordingControl;
class RemoteActions;

// Carries out one action on the main thread. Either target may be absent;
// an action whose target is absent does nothing.
void applyRemoteAction(const RemoteAction& action, RemoteActions* session, RecordingControl* recorder);

}  // namespace orvane
