#pragma once

#include <QByteArray>

#include <atomic>
#include <memory>
#include <mutex>

#include "capture/CaptureBackend.h"

namespace orvane {

class X11Ewmh;
class XcbConnection;

// Capture on an X11 server through XCB. Lists and thumbnails use one
// connection of the backend's; every live stream opens its own.
class X11CaptureBackend : public CaptureBackend {
public:
    // An empty name uses $DISPLAY.
    explicit X11CaptureBackend(QByteArray displayName = {});
    ~X11CaptureBackend() override;

    CaptureResult<std::vector<CaptureDisplay>> displays() override;
    CaptureResult<std::vector<ShareableWindow>> windows() override;
    std::optional<QImage> displayThumbnail(std::uint32_t displayId) override;
    std::optional<QImage> windowThumbnail(std::uint32_t windowId) override;
    CaptureResult<std::unique_ptr<CaptureStream>> openStream(const CaptureTarget& target) override;
    void bringWindowToFront(std::uint32_t windowId) override;
    int openStreamCount() const override { return openStreams_->load(); }

private:
    bool connect();  // with mutex_ held
    std::optional<QImage> stillPicture(const CaptureTarget& target, const QRect& displayArea);

    const QByteArray displayName_;
    std::mutex mutex_;
    std::unique_ptr<XcbConnection> connection_;  // protected by mutex_
    std::unique_ptr<X11Ewmh> ewmh_;              // protected by mutex_
    std::shared_ptr<std::atomic<int>> openStreams_ = std::make_shared<std::atomic<int>>(0);
    std::shared_ptr<std::atomic<int>> stillGrabs_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace orvane
