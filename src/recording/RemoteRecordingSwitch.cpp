#include "recording/RemoteRecordingSwitch.h"

#include "engine/StreamManager.h"

namespace orvane {

RemoteRecordingSwitch::RemoteRecordingSwitch(RecordingManager& recorder, StreamManager& session)
    : recorder_(&recorder), session_(&session) {}

bool RemoteRecordingSwitch::isRecording() const { return recorder_ && recorder_->isRecording(); }

void RemoteRecordingSwitch::startRecording() {
    if (!recorder_ || !session_) return;
    // Like the panel: no second start while one is on its way or running.
    const RecordingStatus status = recorder_->recordingStatus();
    if (recorder_->isRecording() || status == RecordingStatus::preparing || status == RecordingStatus::stopping) return;
    recorder_->startRecording(*session_);
}

void RemoteRecordingSwitch::stopRecording() {
    if (recorder_) recorder_->stopRecording();
}

}  // namespace orvane
