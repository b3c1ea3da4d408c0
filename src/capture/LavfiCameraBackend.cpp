#include "capture/LavfiCameraBackend.h"

#include "capture/FfmpegVideoReader.h"

namespace orvane {

LavfiCameraBackend::LavfiCameraBackend()
    : LavfiCameraBackend({{{QStringLiteral("lavfi:smptebars"), QStringLiteral("Test Pattern")},
                           QStringLiteral("smptebars=size=640x480:rate=30")}}) {}

LavfiCameraBackend::LavfiCameraBackend(std::vector<Pattern> patterns) : patterns_(std::move(patterns)) {}

std::vector<CameraDevice> LavfiCameraBackend::cameras() {
    std::vector<CameraDevice> devices;
    for (const Pattern& pattern : patterns_) devices.push_back(pattern.device);
    return devices;
}

CaptureResult<std::unique_ptr<CaptureStream>> LavfiCameraBackend::openCamera(const QString& id) {
    for (const Pattern& pattern : patterns_) {
        if (pattern.device.id != id) continue;
        // A filter graph runs as fast as it is read; "realtime" holds each
        // frame back to its timestamp, as a device would.
        auto reader = FfmpegVideoReader::open("lavfi", pattern.graph + QStringLiteral(",realtime"), {});
        if (!reader) return CaptureResult<std::unique_ptr<CaptureStream>>::failure(reader.error());
        return std::unique_ptr<CaptureStream>(reader.takeValue());
    }
    return CaptureResult<std::unique_ptr<CaptureStream>>::failure(QStringLiteral("No camera device found"));
}

}  // namespace orvane
