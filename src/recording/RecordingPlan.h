#pragma once

#include <QString>

#include <optional>

#include "recording/OutputFormat.h"
#include "recording/VideoQuality.h"

namespace orvane {

// What one recording writes, fixed at its start: later changes of the
// settings wait for the next one.
struct RecordingPlan {
    QString path;
    OutputFormat format = OutputFormat::mov;
    VideoQuality videoQuality = VideoQuality::high;
    bool systemAudio = true;
    bool microphone = true;
    // The sound server's source names; empty: the server's default source
    // if it is a microphone, else a silent track (microphone), or the
    // default sink's monitor (system sound).
    QString microphoneSource;
    QString systemSoundSource;
};

}  // namespace orvane
