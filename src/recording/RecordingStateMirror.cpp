#include "recording/RecordingStateMirror.h"

#include "engine/StreamManager.h"
#include "recording/RecordingManager.h"

namespace orvane {

QMetaObject::Connection mirrorRecordingState(RecordingManager& recorder, StreamManager& session) {
    session.setIsRecording(recorder.isRecording());
    return QObject::connect(&recorder, &RecordingManager::isRecordingChanged, &session, &StreamManager::setIsRecording);
}

}  // namespace orvane
