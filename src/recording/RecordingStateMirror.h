#pragma once

#include <QMetaObject>

namespace orvane {

class RecordingManager;
class StreamManager;

// Makes the session's isRecording follow the recorder's: set at once, then
// on every change. The returned connection ends the mirroring.
QMetaObject::Connection mirrorRecordingState(RecordingManager& recorder, StreamManager& session);

}  // namespace orvane
