#pragma once

namespace orvane {

// The recorder as the remote switch sees it. Called on the main thread only.
class RecordingControl {
public:
    virtual ~RecordingControl() = default;

    virtual bool isRecording() const = 0;
    virtual void startRecording() = 0;
    virtual void stopRecording() = 0;
};

}  // namespace orvane
