#include "capture/linux/V4l2CameraBackend.h"

#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>

#include <QDir>

#include <algorithm>

#include "capture/FfmpegVideoReader.h"
#include "capture/linux/UniqueFd.h"
#include "document/Log.h"

namespace orvane {

namespace {

// The card name of a device that captures video; nothing otherwise (the
// metadata nodes that many webcams add have no capture capability).
std::optional<QString> captureCardName(const QString& path) {
    UniqueFd fd(::open(path.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!fd.valid()) return std::nullopt;
    v4l2_capability capability{};
    if (::ioctl(fd.get(), VIDIOC_QUERYCAP, &capability) != 0) return std::nullopt;
    const std::uint32_t caps =
        (capability.capabilities & V4L2_CAP_DEVICE_CAPS) ? capability.device_caps : capability.capabilities;
    if (!(caps & V4L2_CAP_VIDEO_CAPTURE)) return std::nullopt;
    return QString::fromUtf8(reinterpret_cast<const char*>(capability.card)).trimmed();
}

// Sets a control to value if the device has it and it is not disabled.
bool setControl(int fd, std::uint32_t id, std::int32_t value) {
    v4l2_queryctrl query{};
    query.id = id;
    if (::ioctl(fd, VIDIOC_QUERYCTRL, &query) != 0 || (query.flags & V4L2_CTRL_FLAG_DISABLED)) return false;
    if (value < query.minimum || value > query.maximum) return false;
    v4l2_control control{};
    control.id = id;
    control.value = value;
    return ::ioctl(fd, VIDIOC_S_CTRL, &control) == 0;
}

void enableAutomaticModes(const QString& path) {
    UniqueFd fd(::open(path.toLocal8Bit().constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (!fd.valid()) return;
    setControl(fd.get(), V4L2_CID_FOCUS_AUTO, 1);
    // Full automatic exposure where offered, else aperture priority, which
    // is what most webcams call automatic.
    if (!setControl(fd.get(), V4L2_CID_EXPOSURE_AUTO, V4L2_EXPOSURE_AUTO))
        setControl(fd.get(), V4L2_CID_EXPOSURE_AUTO, V4L2_EXPOSURE_APERTURE_PRIORITY);
    setControl(fd.get(), V4L2_CID_AUTO_WHITE_BALANCE, 1);
}

}  // namespace

V4l2CameraBackend::V4l2CameraBackend(QString deviceDirectory) : deviceDirectory_(std::move(deviceDirectory)) {}

std::vector<CameraDevice> V4l2CameraBackend::cameras() {
    QDir dir(deviceDirectory_);
    QStringList nodes = dir.entryList({QStringLiteral("video*")}, QDir::System | QDir::Files | QDir::Readable);
    // video2 before video10.
    std::sort(nodes.begin(), nodes.end(), [](const QString& a, const QString& b) {
        return a.mid(5).toInt() < b.mid(5).toInt();
    });
    std::vector<CameraDevice> devices;
    for (const QString& node : nodes) {
        const QString path = dir.filePath(node);
        if (auto card = captureCardName(path)) devices.push_back({path, card->isEmpty() ? node : *card});
    }
    return devices;
}

CaptureResult<std::unique_ptr<CaptureStream>> V4l2CameraBackend::openCamera(const QString& id) {
    if (!captureCardName(id)) return CaptureResult<std::unique_ptr<CaptureStream>>::failure("No camera device found");
    auto reader = FfmpegVideoReader::open("video4linux2", id, {{"framerate", "30"}});
    if (!reader) return CaptureResult<std::unique_ptr<CaptureStream>>::failure(reader.error());
    enableAutomaticModes(id);
    return std::unique_ptr<CaptureStream>(reader.takeValue());
}

}  // namespace orvane
