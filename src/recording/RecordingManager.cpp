#include "recording/RecordingManager.h"

#include <QDateTime>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "composition/FrameSource.h"
#include "document/Log.h"
#include "engine/StreamManager.h"
#include "recording/ProgramSnapshotStore.h"
#include "recording/RecordingError.h"
#include "recording/RecordingSession.h"

#include "engine/AssignIfChanged.h"

namespace orvane {

RecordingManager::RecordingManager(StreamManager& streamManager, QObject* parent)
    : QObject(parent), snapshots_(std::make_shared<ProgramSnapshotStore>()) {
    recordingTimer_.setInterval(kDurationTick);
    connect(&recordingTimer_, &QTimer::timeout, this, &RecordingManager::tick);
    watchSession(&streamManager);
}

RecordingManager::~RecordingManager() {
    recordingTimer_.stop();
    if (session_) {
        session_->finish();
        session_.reset();
        logLine("⏹️ Recording stopped");
    }
    if (finisher_.joinable()) finisher_.join();
}

// ---------------------------------------------------------------- settings

void RecordingManager::setIncludeAudio(bool include) {
    if (assignIfChanged(includeAudio_, include)) emit includeAudioChanged(include);
}

void RecordingManager::setIncludeMicrophone(bool include) {
    if (assignIfChanged(includeMicrophone_, include)) emit includeMicrophoneChanged(include);
}

void RecordingManager::setIncludeSystemAudio(bool include) {
    if (assignIfChanged(includeSystemAudio_, include)) emit includeSystemAudioChanged(include);
}

void RecordingManager::setSelectedMicrophone(const std::optional<MicrophoneDevice>& microphone) {
    if (assignIfChanged(selectedMicrophone_, microphone)) emit selectedMicrophoneChanged();
}

void RecordingManager::setAudioQuality(AudioQuality quality) {
    if (assignIfChanged(audioQuality_, quality)) emit audioQualityChanged();
}

void RecordingManager::setVideoQuality(VideoQuality quality) {
    if (assignIfChanged(videoQuality_, quality)) emit videoQualityChanged();
}

void RecordingManager::setOutputFormat(OutputFormat format) {
    if (assignIfChanged(outputFormat_, format)) emit outputFormatChanged();
}

void RecordingManager::setFrameSource(std::shared_ptr<const FrameSource> frames) {
    frames_ = std::move(frames);
    publishSnapshot();
}

// ---------------------------------------------------------------- published state

void RecordingManager::setIsRecording(bool recording) {
    if (assignIfChanged(isRecording_, recording)) emit isRecordingChanged(recording);
}

void RecordingManager::setRecordingDuration(double seconds) {
    if (assignIfChanged(recordingDuration_, seconds)) emit recordingDurationChanged(seconds);
}

void RecordingManager::setRecordingStatus(RecordingStatus status) {
    if (assignIfChanged(recordingStatus_, status)) emit recordingStatusChanged(status);
}

void RecordingManager::setErrorMessage(const std::optional<QString>& message) {
    if (assignIfChanged(errorMessage_, message)) emit errorMessageChanged();
}

void RecordingManager::setOutputURL(const std::optional<QUrl>& url) {
    if (assignIfChanged(outputURL_, url)) emit outputURLChanged();
}

// ---------------------------------------------------------------- the output file

QString RecordingManager::recordingsFolder() {
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty()) documents = QDir::homePath() + QStringLiteral("/Documents");
    return QDir(documents).filePath(QStringLiteral("OrvaneUI Recordings"));
}

RecordingManager::OutputURLResult RecordingManager::createOutputURL() const {
    const QString folder = recordingsFolder();
    const QFileInfo existing(folder);
    if (existing.exists() && !existing.isDir())
        return {std::nullopt, QStringLiteral("“%1” exists and is not a folder").arg(folder)};
    if (!QDir().mkpath(folder)) return {std::nullopt, QStringLiteral("Cannot create the folder “%1”").arg(folder)};
    // Local time; two starts within one second give the same name.
    const QString name = QStringLiteral("OrvaneUI_Recording_") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd_HH-mm-ss")) +
                         QLatin1Char('.') + QString::fromUtf8(toString(outputFormat_).data());
    return {QUrl::fromLocalFile(QDir(folder).filePath(name)), {}};
}

// ---------------------------------------------------------------- start

void RecordingManager::startRecording(StreamManager& streamManager) {
    const quint64 generation = ++generation_;
    setRecordingStatus(RecordingStatus::preparing);
    setErrorMessage(std::nullopt);

    const OutputURLResult output = createOutputURL();
    if (!output.url) {
        failStart(output.error);
        return;
    }
    setOutputURL(output.url);
    if (&streamManager != streamManager_.data()) watchSession(&streamManager);
    publishSnapshot();
    const VideoQualityRow row = videoQualityRow(videoQuality_);
    logLine("🎥 Recording program output: " + std::to_string(row.width) + "x" + std::to_string(row.height));

    RecordingPlan plan;
    plan.path = output.url->toLocalFile();
    plan.format = outputFormat_;
    plan.videoQuality = videoQuality_;
    plan.systemAudio = includeAudio_ && includeSystemAudio_;
    plan.microphone = includeAudio_ && includeMicrophone_;
    if (selectedMicrophone_) plan.microphoneSource = selectedMicrophone_->id;
    // Set up now, so that the sound devices' first lumps and the render
    // thread's first frame fall into the settle time.
    auto session = std::make_unique<RecordingSession>(plan, snapshots_);
    const QString failure = session->prepare([this, generation](const QString& message) {
        QMetaObject::invokeMethod(this, [this, generation, message] { writerFailed(generation, message); },
                                  Qt::QueuedConnection);
    });
    if (!failure.isEmpty()) {
        // What did start is stopped again, away from the main thread.
        finishInBackground(std::move(session), 0, false);
        failStart(failure);
        return;
    }
    session_ = std::move(session);
    // The settle time of a start stays, as a timer: the main thread goes on.
    QTimer::singleShot(kSettleTime, this, [this, generation] { continueStart(generation); });
}

void RecordingManager::continueStart(quint64 generation, std::chrono::milliseconds waitedForSound) {
    if (generation != generation_ || recordingStatus_ != RecordingStatus::preparing || !session_) return;
    if (!session_->soundIsFlowing()) {
        if (waitedForSound < kSoundWaitLimit) {
            QTimer::singleShot(kSoundWaitStep, this, [this, generation, waitedForSound] {
                continueStart(generation, waitedForSound + kSoundWaitStep);
            });
            return;
        }
        logLine("⚠️ No sound came in within " + std::to_string(kSoundWaitLimit.count() / 1000) +
                " s: the recording begins without it");
    }
    session_->start();
    setRecordingStatus(RecordingStatus::recording);
    setIsRecording(true);
    recordingStartTime_ = std::chrono::steady_clock::now();
    recordingTimer_.start();
    logLine("🔴 Recording started: " + QFileInfo(session_->plan().path).fileName().toStdString());
}

void RecordingManager::failStart(const QString& description) {
    setRecordingStatus(RecordingStatus::error);
    setErrorMessage(QStringLiteral("Failed to start recording: ") + description);
    setIsRecording(false);
    logLine("❌ Recording error: " + description.toStdString());
}

void RecordingManager::tick() {
    if (!recordingStartTime_) return;
    setRecordingDuration(std::chrono::duration<double>(std::chrono::steady_clock::now() - *recordingStartTime_).count());
}

// ---------------------------------------------------------------- stop

void RecordingManager::stopRecording() {
    // A stop already closing the file owns the outcome: a second one would
    // report it before the file is closed.
    if (!isRecording_ || recordingStatus_ == RecordingStatus::stopping) return;
    setRecordingStatus(RecordingStatus::stopping);
    recordingTimer_.stop();
    recordingStartTime_.reset();
    finishInBackground(std::move(session_), generation_, false);
}

void RecordingManager::writerFailed(quint64 generation, const QString& message) {
    if (generation != generation_ || !session_) return;
    if (recordingStatus_ == RecordingStatus::preparing) {
        finishInBackground(std::move(session_), 0, false);
        failStart(message);
        return;
    }
    if (recordingStatus_ != RecordingStatus::recording) return;
    recordingTimer_.stop();
    recordingStartTime_.reset();
    logLine("❌ Recording error: " + message.toStdString());
    setRecordingStatus(RecordingStatus::error);
    setErrorMessage(QString::fromUtf8(toString(RecordingError::writingFailed).data()));
    setIsRecording(false);
    setRecordingDuration(0);
    finishInBackground(std::move(session_), generation, true);
}

void RecordingManager::finishInBackground(std::unique_ptr<RecordingSession> session, quint64 generation,
                                          bool afterWriterFailure) {
    if (!session) {
        // Nothing to close: a stop of a start that never set anything up.
        finishStop(generation, {}, afterWriterFailure);
        return;
    }
    // A previous stop still closing its file is waited for here.
    if (finisher_.joinable()) finisher_.join();
    finisher_ = std::jthread([this, session = std::move(session), generation, afterWriterFailure]() mutable {
        const QString failure = session->finish();
        const RecordingSession::Figures figures = session->figures();
        session.reset();
        QMetaObject::invokeMethod(
            this,
            [this, generation, failure, figures, afterWriterFailure] {
                lastFigures_ = {figures.framesComposed, figures.framesRepeated, figures.framesDropped,
                                figures.framesLate,     figures.framesEncoderBehind, figures.framesEncoded};
                finishStop(generation, failure, afterWriterFailure);
            },
            Qt::QueuedConnection);
    });
}

void RecordingManager::finishStop(quint64 generation, const QString& failure, bool afterWriterFailure) {
    if (generation == 0) return;  // the clean-up of a failed start
    if (generation != generation_ || afterWriterFailure) {
        // Already reported, or a newer start owns the published state.
        if (afterWriterFailure) emit recordingFinished();
        return;
    }
    setIsRecording(false);
    setRecordingDuration(0);
    if (!failure.isEmpty()) {
        logLine("❌ Recording error: " + failure.toStdString());
        setRecordingStatus(RecordingStatus::error);
        setErrorMessage(QString::fromUtf8(toString(RecordingError::writingFailed).data()));
    } else {
        setRecordingStatus(RecordingStatus::completed);
        logLine("⏹️ Recording stopped");
    }
    emit recordingFinished();
}

// ---------------------------------------------------------------- the program snapshot

void RecordingManager::watchSession(StreamManager* streamManager) {
    if (streamManager_) {
        disconnect(streamManager_, nullptr, this, nullptr);
        disconnect(&streamManager_->drawing(), nullptr, this, nullptr);
    }
    streamManager_ = streamManager;
    if (!streamManager) return;
    for (auto signal : {&StreamManager::programSceneChanged, &StreamManager::currentPresetChanged,
                        &StreamManager::progressBarUpdateTimestampChanged, &StreamManager::sceneUpdateTimestampChanged})
        connect(streamManager, signal, this, &RecordingManager::publishSnapshot);
    connect(streamManager, &StreamManager::isBlurModeActiveChanged, this, &RecordingManager::publishSnapshot);
    const DrawingState* drawing = &streamManager->drawing();
    for (auto signal : {&DrawingState::drawingShapesChanged, &DrawingState::freehandPathsChanged,
                        &DrawingState::selectedDrawingToolChanged, &DrawingState::selectedDrawingColorChanged})
        connect(drawing, signal, this, &RecordingManager::publishSnapshot);
    connect(drawing, &DrawingState::isDrawingModeEnabledChanged, this, &RecordingManager::publishSnapshot);
    connect(drawing, &DrawingState::drawingStrokeWidthChanged, this, &RecordingManager::publishSnapshot);
    publishSnapshot();
}

void RecordingManager::publishSnapshot() {
    auto snapshot = std::make_shared<ProgramSnapshot>();
    snapshot->frames = frames_;
    if (StreamManager* session = streamManager_.data()) {
        snapshot->programScene = session->programScene();
        if (const std::optional<Preset>& preset = session->currentPreset()) {
            snapshot->branding = preset->branding;
            snapshot->progressBar = preset->progressBar;
        }
        snapshot->isBlurModeActive = session->isBlurModeActive();
        const DrawingState& drawing = session->drawing();
        snapshot->isDrawingModeEnabled = drawing.isDrawingModeEnabled();
        snapshot->drawing = DrawingLayers{drawing.drawingShapes(), drawing.freehandPaths()};
        snapshot->drawingSelection = DrawingSelection{drawing.selectedDrawingTool(), drawing.selectedDrawingColor(),
                                                      drawing.drawingStrokeWidth()};
    }
    snapshots_->publish(std::move(snapshot));
}

// ---------------------------------------------------------------- the file manager

void RecordingManager::revealRecordingInFinder() {
    if (!outputURL_) return;
    const QUrl file = *outputURL_;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{file.toString()} << QString();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file.toLocalFile()).absolutePath()));
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [file](QDBusPendingCallWatcher* self) {
        if (self->isError()) {
            logLine("⚠️ No file manager answered, opening the folder: " + self->error().message().toStdString());
            QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file.toLocalFile()).absolutePath()));
        }
        self->deleteLater();
    });
}

void RecordingManager::openRecordingsFolder() {
    QDesktopServices::openUrl(QUrl::fromLocalFile(recordingsFolder()));
}

}  // namespace orvane
