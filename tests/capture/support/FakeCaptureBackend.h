#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "capture/CaptureBackend.h"

namespace orvane::test {

// A backend with lists set by the test and streams that paint a solid
// colour; it counts what it opens.
class FakeCaptureBackend : public CaptureBackend {
public:
    std::vector<CaptureDisplay> displayList;
    std::vector<ShareableWindow> windowList;
    QString listingError;  // when set, every listing fails with it
    bool listingDeclined = false;  // that failure is a refusal to capture at all
    QString openError;     // when set, opening a stream fails with it
    QColor colour = Qt::green;
    int openDelayMs = 0;   // how long opening a stream takes, on the capture thread

    CaptureResult<std::vector<CaptureDisplay>> displays() override;
    CaptureResult<std::vector<ShareableWindow>> windows() override;
    std::optional<QImage> displayThumbnail(std::uint32_t) override { return std::nullopt; }
    std::optional<QImage> windowThumbnail(std::uint32_t) override { return std::nullopt; }
    CaptureResult<std::unique_ptr<CaptureStream>> openStream(const CaptureTarget& target) override;
    void bringWindowToFront(std::uint32_t windowId) override { lastRaised = windowId; }
    int openStreamCount() const override { return *open_; }

    int opened() const { return *opened_; }
    // How often displays() and windows() were asked.
    int listings() const { return listings_; }
    // From now on every grab of every open stream fails (a window that
    // closed, a display unplugged), or succeeds again.
    void setGrabsFail(bool fail) { *grabsFail_ = fail; }
    std::uint32_t lastRaised = 0;

private:
    std::shared_ptr<std::atomic<int>> open_ = std::make_shared<std::atomic<int>>(0);
    std::shared_ptr<std::atomic<int>> opened_ = std::make_shared<std::atomic<int>>(0);
    std::shared_ptr<std::atomic<bool>> grabsFail_ = std::make_shared<std::atomic<bool>>(false);
    std::atomic<int> listings_{0};  // the managers list on worker threads
};

}  // namespace orvane::test
