#pragma once

#include <QString>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "recording/AudioEncoder.h"

namespace orvane {

class MovieWriter;
class PulseAudioCapture;
class RecordingClock;

// One audio track of a recording: a sound-server source recorded on its own
// thread, placed on the recording's clock and encoded as it arrives.
//
// Placement: the first chunk after the origin is dated by its arrival minus
// its own length; from then on samples are counted. When the count and the
// arrivals part by more than a fifth of a second (a device that stalled or
// hurried), the track is re-placed with silence or by skipping.
class AudioTrackRecorder {
public:
    using FailureHandler = std::function<void(const QString&)>;

    // source empty: the server's default source.
    AudioTrackRecorder(QString label, QString source, AudioEncoder::Settings settings);
    ~AudioTrackRecorder();
    AudioTrackRecorder(const AudioTrackRecorder&) = delete;
    AudioTrackRecorder& operator=(const AudioTrackRecorder&) = delete;

    // Opens the encoder; the writer's stream comes next.
    QString openEncoder(bool globalHeader);
    AudioEncoder& encoder() { return encoder_; }
    // Starts recording from the device; samples before the clock's origin
    // are dropped. Empty on success.
    QString start(const RecordingClock& clock, FailureHandler onFailure);
    // Stops the device, then writes the rest of the track.
    QString finish();

    const QString& label() const { return label_; }
    std::int64_t samplesWritten() const { return encoder_.samplesWritten(); }

private:
    void take(const float* samples, std::size_t frames);

    const QString label_;
    const QString source_;
    const AudioEncoder::Settings settings_;
    AudioEncoder encoder_;  // used by the capture thread while it runs, then by finish()
    const RecordingClock* clock_ = nullptr;
    FailureHandler onFailure_;
    std::unique_ptr<PulseAudioCapture> capture_;

    // Capture thread only.
    bool placed_ = false;
    double placedAt_s_ = 0;          // where the first placed sample lies on the clock
    std::int64_t inputFramesPlaced_ = 0;  // input frames since that sample
    bool failed_ = false;
};

}  // namespace orvane
