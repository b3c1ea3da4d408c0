#pragma once

#include <QString>

#include <memory>
#include <vector>

#include "capture/CameraDevice.h"
#include "capture/CaptureResult.h"
#include "capture/CaptureStream.h"

namespace orvane {

// Where cameras come from: V4L2 devices, or FFmpeg test sources for tests
// and demos. Both deliver through the same decode path.
class CameraBackend {
public:
    virtual ~CameraBackend() = default;

    // The cameras in the system's order, neither sorted nor filtered.
    virtual std::vector<CameraDevice> cameras() = 0;
    // Opens a camera; called on the capture thread that then owns it.
    virtual CaptureResult<std::unique_ptr<CaptureStream>> openCamera(const QString& id) = 0;
};

}  // namespace orvane
