#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>
#include <thread>

#include "capture/MicrophoneDevice.h"
#include "recording/AudioQuality.h"
#include "recording/OutputFormat.h"
#include "recording/RecordingStatus.h"
#include "recording/VideoQuality.h"

namespace orvane {

class FrameSource;
class ProgramSnapshotStore;
class RecordingSession;
class StreamManager;

// Records what the audience sees: the program output, composed off-screen
// at the video quality's size, with system sound and the microphone as two
// AAC tracks. Owned by the session; lives on the main thread, where every
// published field is written. Starting and stopping never block the main
// thread for long: the half-second settle is a timer and the file is closed
// on a thread of its own.
class RecordingManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(double recordingDuration READ recordingDuration NOTIFY recordingDurationChanged)
    Q_PROPERTY(orvane::RecordingStatus recordingStatus READ recordingStatus NOTIFY recordingStatusChanged)
    Q_PROPERTY(std::optional<QString> errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(std::optional<QUrl> outputURL READ outputURL NOTIFY outputURLChanged)
    Q_PROPERTY(bool includeAudio READ includeAudio WRITE setIncludeAudio NOTIFY includeAudioChanged)
    Q_PROPERTY(bool includeMicrophone READ includeMicrophone WRITE setIncludeMicrophone NOTIFY includeMicrophoneChanged)
    Q_PROPERTY(bool includeSystemAudio READ includeSystemAudio WRITE setIncludeSystemAudio NOTIFY includeSystemAudioChanged)
    Q_PROPERTY(std::optional<orvane::MicrophoneDevice> selectedMicrophone READ selectedMicrophone WRITE setSelectedMicrophone NOTIFY selectedMicrophoneChanged)
    Q_PROPERTY(orvane::AudioQuality audioQuality READ audioQuality WRITE setAudioQuality NOTIFY audioQualityChanged)
    Q_PROPERTY(orvane::VideoQuality videoQuality READ videoQuality WRITE setVideoQuality NOTIFY videoQualityChanged)
    Q_PROPERTY(orvane::OutputFormat outputFormat READ outputFormat WRITE setOutputFormat NOTIFY outputFormatChanged)

public:
    static constexpr auto kSettleTime = std::chrono::milliseconds(500);
    // After the settle, how long the start waits at most for the sound
    // sources' first sound, and how often it looks.
    static constexpr auto kSoundWaitLimit = std::chrono::milliseconds(3000);
    static constexpr auto kSoundWaitStep = std::chrono::milliseconds(20);
    static constexpr auto kDurationTick = std::chrono::milliseconds(100);

    // The session whose program is recorded; it must outlive the manager
    // (the composition root destroys the recorder before the session).
    explicit RecordingManager(StreamManager& streamManager, QObject* parent = nullptr);
    // Stops a running recording and waits until its file is closed.
    ~RecordingManager() override;

    bool isRecording() const { return isRecording_; }
    double recordingDuration() const { return recordingDuration_; }
    RecordingStatus recordingStatus() const { return recordingStatus_; }
    const std::optional<QString>& errorMessage() const { return errorMessage_; }
    const std::optional<QUrl>& outputURL() const { return outputURL_; }
    bool includeAudio() const { return includeAudio_; }
    void setIncludeAudio(bool include);
    bool includeMicrophone() const { return includeMicrophone_; }
    void setIncludeMicrophone(bool include);
    bool includeSystemAudio() const { return includeSystemAudio_; }
    void setIncludeSystemAudio(bool include);
    const std::optional<MicrophoneDevice>& selectedMicrophone() const { return selectedMicrophone_; }
    void setSelectedMicrophone(const std::optional<MicrophoneDevice>& microphone);
    AudioQuality audioQuality() const { return audioQuality_; }
    void setAudioQuality(AudioQuality quality);
    VideoQuality videoQuality() const { return videoQuality_; }
    void setVideoQuality(VideoQuality quality);
    OutputFormat outputFormat() const { return outputFormat_; }
    void setOutputFormat(OutputFormat format);

    // The live pictures of the program's sources, read on the recorder's
    // thread: latestFrame() must be safe to call from any thread (see
    // LiveFrameTable). Takes effect at once, also during a recording.
    void setFrameSource(std::shared_ptr<const FrameSource> frames);

    // The recordings folder: the documents folder + "OrvaneUI Recordings".
    static QString recordingsFolder();
    // A new file's URL in the recordings folder, which is created if need
    // be; an error text when it cannot be.
    struct OutputURLResult {
        std::optional<QUrl> url;
        QString error;
    };
    OutputURLResult createOutputURL() const;

    // Figures of the current or last recording, for the benchmark and logs.
    struct Figures {
        std::int64_t framesComposed = 0;
        std::int64_t framesRepeated = 0;
        std::int64_t framesDropped = 0;
        std::int64_t framesLate = 0;           // dropped: drawing fell behind the clock
        std::int64_t framesEncoderBehind = 0;  // dropped: the encoder had no room
        std::int64_t framesEncoded = 0;
    };
    Figures lastFigures() const { return lastFigures_; }

public slots:
    // Asynchronous; the outcome lands in the published state.
    void startRecording(orvane::StreamManager& streamManager);
    // Starts the stop; does nothing unless isRecording, nor while a stop is
    // under way.
    void stopRecording();
    // Shows the file in the file manager (FileManager1 ShowItems), or opens
    // its folder when no file manager answers.
    void revealRecordingInFinder();
    // Opens the recordings folder, without creating it.
    void openRecordingsFolder();

signals:
    void isRecordingChanged(bool recording);
    void recordingDurationChanged(double seconds);
    void recordingStatusChanged(orvane::RecordingStatus status);
    void errorMessageChanged();
    void outputURLChanged();
    void includeAudioChanged(bool include);
    void includeMicrophoneChanged(bool include);
    void includeSystemAudioChanged(bool include);
    void selectedMicrophoneChanged();
    void audioQualityChanged();
    void videoQualityChanged();
    void outputFormatChanged();
    // After a stop, once the file is closed (or the stop failed).
    void recordingFinished();

private:
    void continueStart(quint64 generation, std::chrono::milliseconds waitedForSound = {});
    void failStart(const QString& description);
    void finishStop(quint64 generation, const QString& failure, bool fromWriterFailure);
    void writerFailed(quint64 generation, const QString& message);
    void tick();
    void watchSession(StreamManager* streamManager);
    void publishSnapshot();
    void finishInBackground(std::unique_ptr<RecordingSession> session, quint64 generation, bool fromWriterFailure);

    void setIsRecording(bool recording);
    void setRecordingDuration(double seconds);
    void setRecordingStatus(RecordingStatus status);
    void setErrorMessage(const std::optional<QString>& message);
    void setOutputURL(const std::optional<QUrl>& url);

    QPointer<StreamManager> streamManager_;  // the session whose program is recorded
    std::shared_ptr<ProgramSnapshotStore> snapshots_;
    std::shared_ptr<const FrameSource> frames_;

    // Published state, in order.
    bool isRecording_ = false;
    double recordingDuration_ = 0;
    RecordingStatus recordingStatus_ = RecordingStatus::idle;
    std::optional<QString> errorMessage_;
    std::optional<QUrl> outputURL_;
    bool includeAudio_ = true;
    bool includeMicrophone_ = true;
    bool includeSystemAudio_ = true;
    std::optional<MicrophoneDevice> selectedMicrophone_;
    AudioQuality audioQuality_ = AudioQuality::high;
    VideoQuality videoQuality_ = VideoQuality::high;
    OutputFormat outputFormat_ = OutputFormat::mov;

    // Private state.
    quint64 generation_ = 0;  // a start or stop that finds another running drops its result
    std::unique_ptr<RecordingSession> session_;
    QTimer recordingTimer_;
    std::optional<std::chrono::steady_clock::time_point> recordingStartTime_;
    Figures lastFigures_;
    std::jthread finisher_;  // closes the file of the last stop; last, so it is joined first
};

}  // namespace orvane
