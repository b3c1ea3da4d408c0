#pragma once

#include <QString>

#include "capture/CameraBackend.h"

namespace orvane {

// V4L2 video capture devices under /dev. Opening one switches on continuous
// automatic focus, exposure and white balance where the device offers them.
class V4l2CameraBackend : public CameraBackend {
public:
    explicit V4l2CameraBackend(QString deviceDirectory = QStringLiteral("/dev"));

    std::vector<CameraDevice> cameras() override;
    CaptureResult<std::unique_ptr<CaptureStream>> openCamera(const QString& id) override;

private:
    QString deviceDirectory_;
};

}  // namespace orvane
