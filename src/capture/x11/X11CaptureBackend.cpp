#include "capture/x11/X11CaptureBackend.h"

#include <algorithm>

#include "capture/CaptureError.h"
#include "capture/x11/X11DisplayList.h"
#include "capture/x11/X11Ewmh.h"
#include "capture/x11/X11CaptureStream.h"
#include "capture/x11/X11WindowList.h"
#include "capture/x11/XcbConnection.h"
#include "document/Log.h"

namespace orvane {

X11CaptureBackend::X11CaptureBackend(QByteArray displayName) : displayName_(std::move(displayName)) {}

X11CaptureBackend::~X11CaptureBackend() = default;

bool X11CaptureBackend::connect() {
    // A connection that broke (the server went away) is replaced.
    if (connection_ && connection_->ok() && !xcb_connection_has_error(connection_->get())) return true;
    ewmh_.reset();
    connection_ = std::make_unique<XcbConnection>(displayName_);
    if (!connection_->ok()) return false;
    ewmh_ = std::make_unique<X11Ewmh>(*connection_);
    return true;
}

CaptureResult<std::vector<CaptureDisplay>> X11CaptureBackend::displays() {
    std::lock_guard lock(mutex_);
    if (!connect()) return CaptureResult<std::vector<CaptureDisplay>>::failure(connection_->failure());
    return X11DisplayList::list(*connection_);
}

CaptureResult<std::vector<ShareableWindow>> X11CaptureBackend::windows() {
    std::lock_guard lock(mutex_);
    if (!connect()) return CaptureResult<std::vector<ShareableWindow>>::failure(connection_->failure());
    return X11WindowList::list(*connection_, *ewmh_);
}

std::optional<QImage> X11CaptureBackend::displayThumbnail(std::uint32_t displayId) {
    auto listed = displays();
    if (!listed) return std::nullopt;
    for (const CaptureDisplay& display : listed.value()) {
        if (display.id != displayId) continue;
        CaptureTarget target;
        target.kind = CaptureTarget::Kind::display;
        target.id = display.id;
        target.outputSize = QSize(std::min(display.width, 1920), std::min(display.height, 1080));
        return stillPicture(target, display.frame);
    }
    return std::nullopt;
}

std::optional<QImage> X11CaptureBackend::windowThumbnail(std::uint32_t windowId) {
    auto listed = windows();
    if (!listed) return std::nullopt;
    for (const ShareableWindow& window : listed.value()) {
        if (window.id != windowId || window.frame.isEmpty()) continue;
        CaptureTarget target;
        target.kind = CaptureTarget::Kind::window;
        target.id = window.id;
        target.outputSize = window.frame.size();
        return stillPicture(target, {});
    }
    return std::nullopt;
}

std::optional<QImage> X11CaptureBackend::stillPicture(const CaptureTarget& target, const QRect& displayArea) {
    // A thumbnail is a stream of one frame that does not count as a stream.
    auto opened = X11CaptureStream::open(displayName_, target, displayArea, stillGrabs_);
    if (!opened) return std::nullopt;
    auto frame = opened.value()->grabFrame();
    if (!frame) return std::nullopt;
    // Detach from the pool's memory, which goes with the source.
    return frame.value().image.copy();
}

CaptureResult<std::unique_ptr<CaptureStream>> X11CaptureBackend::openStream(const CaptureTarget& target) {
    QRect displayArea;
    if (target.kind == CaptureTarget::Kind::display) {
        auto listed = displays();
        if (!listed) return CaptureResult<std::unique_ptr<CaptureStream>>::failure(listed.error());
        const auto& all = listed.value();
        auto it = std::find_if(all.begin(), all.end(), [&](const CaptureDisplay& d) { return d.id == target.id; });
        if (it == all.end())
            return CaptureResult<std::unique_ptr<CaptureStream>>::failure(errorDescription(CaptureError::noDisplayFound));
        displayArea = it->frame;
    }
    return X11CaptureStream::open(displayName_, target, displayArea, openStreams_);
}

void X11CaptureBackend::bringWindowToFront(std::uint32_t windowId) {
    std::lock_guard lock(mutex_);
    if (!connect() || !ewmh_->ok()) {
        logLine("⚠️ Error bringing window to front: " + connection_->failure().toStdString());
        return;
    }
    // Source "pager": window managers honour it without focus-stealing rules.
    xcb_ewmh_request_change_active_window(ewmh_->get(), connection_->screenNumber(), windowId,
                                          XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER, XCB_CURRENT_TIME, XCB_NONE);
    xcb_flush(connection_->get());
    logLine("🪟 Asked to bring window " + std::to_string(windowId) + " to front");
}

}  // namespace orvane
