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
class SilentInput;

// One audio track of a recording: a sound-server source recorded on its own
// thread, placed on the recording's clock and encoded as it arrives.
//
// Placement: a chunk cannot arrive before its last sample was taken, so
// "arrival minus samples so far" bounds the moment the device's first
// sample was taken; the smallest such bound is the device's start on the
// steady clock. Servers hand over sound in lumps at first (a sink's monitor
// finishes its current long block), so the device starts before the
// recording's origin and the bound settles in that pre-roll. Each chunk then
// lands where its samples belong: a gap becomes silence, sound that belongs
// before what was written already is dropped. When the recording stops, a
// track that the device left short is filled with silence up to the end.
//
// A device that goes away while recording (the sound server dies, say) is
// replaced by silence from that moment, dated afresh, so that the track
// goes on growing with the picture.
class AudioTrackRecorder {
public:
    using FailureHandler = std::function<void(const QString&)>;
    // Called once, on the device's thread, when the device went away and
    // silence took its place.
    using InputLostHandler = std::function<void(const QString& label, const QString& reason, bool serverGone)>;

    // source: a sound-server source name; empty: no device, the track is
    // silence for as long as the recording runs.
    AudioTrackRecorder(QString label, QString source, AudioEncoder::Settings settings);
    ~AudioTrackRecorder();
    AudioTrackRecorder(const AudioTrackRecorder&) = delete;
    AudioTrackRecorder& operator=(const AudioTrackRecorder&) = delete;

    // Opens the encoder; the writer's stream comes next.
    QString openEncoder(bool globalHeader);
    AudioEncoder& encoder() { return encoder_; }
    // Starts recording from the device, before the clock's origin is set;
    // samples before the origin are dropped. Empty on success.
    QString start(const RecordingClock& clock, FailureHandler onFailure, InputLostHandler onInputLost = {});
    // Starts the track on silence instead, for a device that could not be
    // opened: the track is kept, as long as the picture.
    void startSilent(const RecordingClock& clock, FailureHandler onFailure);
    // Stops the device, then writes the rest of the track, up to the
    // clock's end when it has one.
    QString finish();

    const QString& label() const { return label_; }
    std::int64_t samplesWritten() const { return encoder_.samplesWritten(); }

    // Whether any sound has come in yet, from the device or the silence
    // standing in for it. Any thread.
    bool hasHeardInput() const { return heardInput_.load(); }

private:
    void take(const float* samples, std::size_t frames);
    void startSilence();
    void deviceLost(const QString& reason, bool serverGone);

    const QString label_;
    const QString source_;
    const AudioEncoder::Settings settings_;
    AudioEncoder encoder_;  // used by the capture thread while it runs, then by finish()
    const RecordingClock* clock_ = nullptr;
    FailureHandler onFailure_;
    InputLostHandler onInputLost_;
    std::unique_ptr<PulseAudioCapture> capture_;  // or, with no device:
    // Set by start() or startSilent(), or by the device's thread when the
    // device goes away; read by finish() only after that thread was joined.
    std::unique_ptr<SilentInput> silence_;

    // Capture thread only.
    std::int64_t inputFrames_ = 0;  // since the device started
    bool hasDeviceStart_ = false;
    double deviceStart_s_ = 0;      // steady clock, seconds since its epoch
    double writeCursor_s_ = 0;      // where the next written sample lands, from the origin
    bool failed_ = false;
    std::atomic<bool> heardInput_{false};
};

}  // namespace orvane
