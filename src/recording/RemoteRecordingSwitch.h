#pragma once

#include <QPointer>

#include "recording/RecordingManager.h"
#include "remote/RecordingControl.h"

namespace orvane {

class StreamManager;

// The remote's recording switch, driving the real recorder: a start records
// the session's program, a stop ends it. Main thread.
class RemoteRecordingSwitch : public RecordingControl {
public:
    RemoteRecordingSwitch(RecordingManager& recorder, StreamManager& session);

    bool isRecording() const override;
    void startRecording() override;
    void stopRecording() override;

private:
    QPointer<RecordingManager> recorder_;
    QPointer<StreamManager> session_;
};

}  // namespace orvane
