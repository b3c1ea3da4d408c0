#pragma once

#include <vector>

#include "capture/CameraBackend.h"

namespace orvane {

// Cameras made of FFmpeg filter graphs (lavfi), for tests and demos. They
// run the same decode and conversion path as a real camera, at their own
// frame rate in real time.
class LavfiCameraBackend : public CameraBackend {
public:
    struct Pattern {
        CameraDevice device;
        QString graph;  // e.g. "smptebars=size=640x480:rate=30"
    };

    // One device by default: SMPTE colour bars, 640x480 at 30 frames a second.
    LavfiCameraBackend();
    explicit LavfiCameraBackend(std::vector<Pattern> patterns);

    std::vector<CameraDevice> cameras() override;
    CaptureResult<std::unique_ptr<CaptureStream>> openCamera(const QString& id) override;

private:
    std::vector<Pattern> patterns_;
};

}  // namespace orvane
