#pragma once

#include "capture/CaptureBackend.h"

namespace orvane::test {

// A machine without a display server: every listing and screen capture
// fails, so the scenes of a test show cameras and pictures only.
class NoDisplays : public CaptureBackend {
public:
    CaptureResult<std::vector<CaptureDisplay>> displays() override {
        return CaptureResult<std::vector<CaptureDisplay>>::failure(QStringLiteral("no display server"));
    }
    CaptureResult<std::vector<ShareableWindow>> windows() override {
        return CaptureResult<std::vector<ShareableWindow>>::failure(QStringLiteral("no display server"));
    }
    std::optional<QImage> displayThumbnail(std::uint32_t) override { return std::nullopt; }
    std::optional<QImage> windowThumbnail(std::uint32_t) override { return std::nullopt; }
    CaptureResult<std::unique_ptr<CaptureStream>> openStream(const CaptureTarget&) override {
        return CaptureResult<std::unique_ptr<CaptureStream>>::failure(QStringLiteral("no display server"));
    }
    void bringWindowToFront(std::uint32_t) override {}
    int openStreamCount() const override { return 0; }
};

}  // namespace orvane::test
