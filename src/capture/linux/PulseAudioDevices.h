#pragma once

#include <QString>

#include <vector>

#include "capture/CaptureResult.h"
#include "capture/MicrophoneDevice.h"

namespace orvane {

// What the sound server offers to record. Microphones are its sources that
// are not the monitor of a sink; system sound is the monitor of the default
// sink. Each call connects, asks and disconnects; it blocks only for the
// round trips to a local server.
class PulseAudioDevices {
public:
    static CaptureResult<std::vector<MicrophoneDevice>> microphones();
    // The name of the source that carries what the default sink plays.
    static CaptureResult<QString> systemSoundSource();
};

}  // namespace orvane
