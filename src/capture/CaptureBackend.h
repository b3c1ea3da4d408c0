#pragma once

#include <QImage>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "capture/CaptureDisplay.h"
#include "capture/CaptureResult.h"
#include "capture/CaptureTarget.h"
#include "capture/CaptureStream.h"
#include "capture/ShareableWindow.h"

namespace orvane {

// What a display server offers to capture. The X11 implementation sits in
// x11/; a PipeWire one can stand beside it.
class CaptureBackend {
public:
    virtual ~CaptureBackend() = default;

    // The displays, in the server's order. Fails when the server refuses.
    virtual CaptureResult<std::vector<CaptureDisplay>> displays() = 0;
    // The windows on screen, in the server's order, unfiltered.
    virtual CaptureResult<std::vector<ShareableWindow>> windows() = 0;

    // Still pictures for the selection sheets; nothing on any failure.
    // A display's picture is at most 1920 by 1080, a window's its own size.
    virtual std::optional<QImage> displayThumbnail(std::uint32_t displayId) = 0;
    virtual std::optional<QImage> windowThumbnail(std::uint32_t windowId) = 0;

    // Opens a live stream. Called on the capture thread that then owns the
    // source; thread-safe.
    virtual CaptureResult<std::unique_ptr<CaptureStream>> openStream(const CaptureTarget& target) = 0;

    // Asks the window manager to activate the window; no outcome.
    virtual void bringWindowToFront(std::uint32_t windowId) = 0;

    // Streams open right now, for the one-capture-per-target guarantee.
    virtual int openStreamCount() const = 0;
};

}  // namespace orvane
