#include "MovingDesktopBackend.h"

#include "MovingDesktopStream.h"

namespace orvane {

MovingDesktopBackend::MovingDesktopBackend(const MovingDesktop& desktop, std::uint32_t displayId)
    : desktop_(desktop), displayId_(displayId) {}

CaptureResult<std::vector<CaptureDisplay>> MovingDesktopBackend::displays() {
    CaptureDisplay display;
    display.id = displayId_;
    display.width = 1920;
    display.height = 1080;
    display.name = QStringLiteral("Moving desktop");
    display.frame = QRect(0, 0, 1920, 1080);
    return std::vector<CaptureDisplay>{display};
}

CaptureResult<std::vector<ShareableWindow>> MovingDesktopBackend::windows() {
    return std::vector<ShareableWindow>{};
}

CaptureResult<std::unique_ptr<CaptureStream>> MovingDesktopBackend::openStream(const CaptureTarget& target) {
    if (target.kind != CaptureTarget::Kind::display || target.id != displayId_)
        return CaptureResult<std::unique_ptr<CaptureStream>>::failure(QStringLiteral("No such display"));
    return std::unique_ptr<CaptureStream>(std::make_unique<MovingDesktopStream>(desktop_, openStreams_));
}

}  // namespace orvane
