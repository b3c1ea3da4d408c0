#include "recording/RecordingSession.h"

#include "document/Log.h"
#include "recording/AudioTrackRecorder.h"
#include "recording/DefaultMicrophone.h"
#include "recording/MovieWriter.h"
#include "recording/ProgramSnapshotStore.h"
#include "recording/VideoEncoder.h"
#include "recording/VideoPipeline.h"

namespace orvane {

RecordingSession::RecordingSession(RecordingPlan plan, std::shared_ptr<ProgramSnapshotStore> snapshots)
    : plan_(std::move(plan)), snapshots_(std::move(snapshots)) {}

RecordingSession::~RecordingSession() { finish(); }

QString RecordingSession::prepare(FailureHandler onFailure) {
    onFailure_ = std::move(onFailure);
    writer_ = std::make_unique<MovieWriter>();
    if (QString failure = writer_->create(plan_.path, plan_.format); !failure.isEmpty()) return failure;
    writer_->setFailureHandler([this](const QString& message) { reportFailure(message); });
    const bool globalHeader = true;  // every container here keeps codec headers in the index

    const VideoQualityRow row = videoQualityRow(plan_.videoQuality);
    VideoEncoder::Settings videoSettings{row.width, row.height,
                                         videoBitRate_bps(row.width, row.height, plan_.videoQuality)};
    logLine("🎬 Video settings: " + std::to_string(row.width) + "x" + std::to_string(row.height) + " @ " +
            std::to_string(videoSettings.bitRate_bps / 1000) + "kbps");
    video_ = std::make_unique<VideoEncoder>();
    if (QString failure = video_->open(videoSettings, globalHeader); !failure.isEmpty()) return failure;
    video_->setStream(writer_.get(), writer_->addStream(video_->context()));

    if (plan_.systemAudio) {
        // The server resolves this name to the default sink's monitor.
        const QString source = plan_.systemSoundSource.isEmpty() ? QStringLiteral("@DEFAULT_MONITOR@") : plan_.systemSoundSource;
        systemAudio_ = std::make_unique<AudioTrackRecorder>(QStringLiteral("System audio"), source,
                                                            AudioEncoder::Settings{48000, 2, 2, 128000});
        if (QString failure = systemAudio_->openEncoder(globalHeader); !failure.isEmpty()) return failure;
        const int index = writer_->addStream(systemAudio_->encoder().context());
        if (index >= 0) {
            systemAudio_->encoder().setStream(writer_.get(), index);
            logLine("🔊 System audio input added to asset writer");
        } else {
            logLine("⚠️ Failed to add system audio input to asset writer");
        }
    }
    QString microphoneSource = plan_.microphoneSource;
    if (plan_.microphone && microphoneSource.isEmpty()) {
        // No microphone chosen: the default input, if it is one. Without a
        // microphone the recording goes on and the track stays, silent.
        const DefaultMicrophone::Lookup found = DefaultMicrophone::find();
        microphoneSource = found.source;
        if (microphoneSource.isEmpty()) {
            logLine("⚠️ No microphone device found");
            logLine("🎤 The microphone track stays silent: " + found.why.toStdString());
        }
    }
    if (plan_.microphone) {
        microphone_ = std::make_unique<AudioTrackRecorder>(QStringLiteral("Microphone"), microphoneSource,
                                                           AudioEncoder::Settings{48000, 2, 1, 64000});
        if (QString failure = microphone_->openEncoder(globalHeader); !failure.isEmpty()) return failure;
        const int index = writer_->addStream(microphone_->encoder().context());
        if (index >= 0) {
            microphone_->encoder().setStream(writer_.get(), index);
            logLine("🎤 Microphone audio input added to asset writer");
        } else {
            logLine("⚠️ Failed to add microphone audio input to asset writer");
        }
    }
    if (QString failure = writer_->open(); !failure.isEmpty()) return failure;

    // Devices first: their sound before the origin only dates them.
    const auto audioFailed = [this](const QString& message) { reportFailure(message); };
    const auto lostInput = [this](const QString& label, const QString& reason, bool serverGone) {
        inputLost(label, reason, serverGone);
    };
    if (systemAudio_) {
        if (QString failure = systemAudio_->start(clock_, audioFailed, lostInput); !failure.isEmpty()) {
            // What the machine plays is not worth failing a recording over
            // (no sound server, say): the track stays, silent.
            logLine("⚠️ System audio unavailable, the track stays silent: " + failure.toStdString());
            systemAudio_->startSilent(clock_, audioFailed);
        }
    }
    if (microphone_) {
        if (QString failure = microphone_->start(clock_, audioFailed, lostInput); !failure.isEmpty()) {
            logLine("❌ Error setting up microphone capture: " + failure.toStdString());
            return QStringLiteral("Microphone: ") + failure;
        }
        if (!microphoneSource.isEmpty()) logLine("🎤 Microphone capture started: " + microphoneSource.toStdString());
    }
    pipeline_ = std::make_unique<VideoPipeline>(QSize(row.width, row.height), snapshots_, *video_);
    return pipeline_->start(clock_, [this](const QString& message) { reportFailure(message); });
}

bool RecordingSession::soundIsFlowing() const {
    for (const auto* track : {systemAudio_.get(), microphone_.get()})
        if (track && !track->hasHeardInput()) return false;
    return true;
}

void RecordingSession::start() {
    if (!pipeline_ || clock_.hasOrigin()) return;
    clock_.setOrigin(RecordingClock::Clock::now());
    pipeline_->begin();
}

QString RecordingSession::finish() {
    if (finished_) return {};
    finished_ = true;
    QString result;
    const auto keep = [&result](const QString& failure) {
        if (result.isEmpty() && !failure.isEmpty()) result = failure;
    };
    if (clock_.hasOrigin()) clock_.setEnd(RecordingClock::Clock::now());
    if (pipeline_) keep(pipeline_->stop());
    if (systemAudio_) keep(systemAudio_->finish());
    if (microphone_) keep(microphone_->finish());
    if (writer_) keep(writer_->finish());
    return result;
}

RecordingSession::Figures RecordingSession::figures() const {
    Figures figures;
    if (pipeline_) {
        const VideoPipeline::Figures video = pipeline_->figures();
        figures.framesComposed = video.composed;
        figures.framesRepeated = video.repeated;
        figures.framesLate = video.late;
        figures.framesEncoderBehind = video.encoderBehind;
        figures.framesDropped = video.dropped();
    }
    if (video_) figures.framesEncoded = video_->framesEncoded();
    if (systemAudio_) figures.systemAudioSamples = systemAudio_->samplesWritten();
    if (microphone_) figures.microphoneSamples = microphone_->samplesWritten();
    return figures;
}

void RecordingSession::inputLost(const QString& label, const QString& reason, bool serverGone) {
    // Both tracks lose a server that dies; one line says so for both.
    if (serverGone) {
        if (!serverLossLogged_.exchange(true))
            logLine("⚠️ Lost the sound server (" + reason.toStdString() + "): the sound tracks go on silent");
        return;
    }
    logLine("⚠️ " + label.toStdString() + " input lost (" + reason.toStdString() + "): the track goes on silent");
}

void RecordingSession::reportFailure(const QString& message) {
    if (failureReported_.exchange(true)) return;
    if (onFailure_) onFailure_(message);
}

}  // namespace orvane
