#pragma once

#include <atomic>
#include <cstdint>

#include "capture/CaptureBackend.h"

namespace orvane {

class MovingDesktop;

// A display server with one display, 1920 by 1080, whose picture is a
// MovingDesktop: so that the benchmark's screen source runs through the
// application's capture path (shared capture, view model, relay) as a real
// display's would. It has no windows. The desktop must outlive the backend
// and have drawn its cycle.
class MovingDesktopBackend : public CaptureBackend {
public:
    MovingDesktopBackend(const MovingDesktop& desktop, std::uint32_t displayId);

    CaptureResult<std::vector<CaptureDisplay>> displays() override;
    CaptureResult<std::vector<ShareableWindow>> windows() override;
    std::optional<QImage> displayThumbnail(std::uint32_t) override { return std::nullopt; }
    std::optional<QImage> windowThumbnail(std::uint32_t) override { return std::nullopt; }
    CaptureResult<std::unique_ptr<CaptureStream>> openStream(const CaptureTarget& target) override;
    void bringWindowToFront(std::uint32_t) override {}
    int openStreamCount() const override { return openStreams_; }

private:
    const MovingDesktop& desktop_;
    const std::uint32_t displayId_;
    std::atomic<int> openStreams_{0};
};

}  // namespace orvane
