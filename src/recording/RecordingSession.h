#pragma once

#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

#include "recording/RecordingClock.h"
#include "recording/RecordingPlan.h"

namespace orvane {

class AudioTrackRecorder;
class MovieWriter;
class ProgramSnapshotStore;
class VideoEncoder;
class VideoPipeline;

// One recording from set-up to the closed file: the writer, the H.264
// track with its render and encoder threads, and up to two AAC tracks
// (system sound, then microphone). Not a QObject: the manager drives it
// from the main thread and finishes it on a thread of its own.
class RecordingSession {
public:
    // Called at most once, from whichever thread saw the failure.
    using FailureHandler = std::function<void(const QString&)>;

    struct Figures {
        std::int64_t framesComposed = 0;       // drawn anew
        std::int64_t framesRepeated = 0;       // unchanged, the last picture again
        std::int64_t framesDropped = 0;        // the two below together
        std::int64_t framesLate = 0;           // the render thread was behind its clock
        std::int64_t framesEncoderBehind = 0;  // the encoder had no room
        std::int64_t framesEncoded = 0;
        std::int64_t systemAudioSamples = 0;
        std::int64_t microphoneSamples = 0;
    };

    RecordingSession(RecordingPlan plan, std::shared_ptr<ProgramSnapshotStore> snapshots);
    ~RecordingSession();
    RecordingSession(const RecordingSession&) = delete;
    RecordingSession& operator=(const RecordingSession&) = delete;

    // Sets everything up and opens the sound devices, which run ahead of
    // the recording (their sound is dropped until start()). Empty on success.
    QString prepare(FailureHandler onFailure);
    // Whether every sound track has heard its first input. A sound server
    // may deliver a newly connected stream's first sound a second or more
    // late; nothing from before that can be had, so the recording should
    // begin only then, for sound and picture to line up from its start.
    bool soundIsFlowing() const;
    // Sets the clock's origin: the first frame is due now.
    void start();
    // Stops the capture and closes the file; blocks until it is closed.
    // Empty on success, else why the file is incomplete.
    QString finish();

    Figures figures() const;
    const RecordingPlan& plan() const { return plan_; }

private:
    void reportFailure(const QString& message);
    // A sound device went away while recording; its track goes on silent.
    // Called on the device's thread.
    void inputLost(const QString& label, const QString& reason, bool serverGone);

    const RecordingPlan plan_;
    const std::shared_ptr<ProgramSnapshotStore> snapshots_;
    FailureHandler onFailure_;
    std::atomic<bool> failureReported_{false};
    std::atomic<bool> serverLossLogged_{false};
    RecordingClock clock_;
    std::unique_ptr<MovieWriter> writer_;
    std::unique_ptr<VideoEncoder> video_;
    std::unique_ptr<AudioTrackRecorder> systemAudio_;
    std::unique_ptr<AudioTrackRecorder> microphone_;
    std::unique_ptr<VideoPipeline> pipeline_;  // last: its threads stop first
    bool finished_ = false;
};

}  // namespace orvane
