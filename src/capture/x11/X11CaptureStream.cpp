#include "capture/x11/X11CaptureStream.h"

#include <xcb/composite.h>
#include <xcb/shm.h>

#include <fcntl.h>

#include <cstdlib>
#include <cstring>

#include "capture/CaptureError.h"
#include "capture/FrameFit.h"
#include "capture/x11/XcbReply.h"

namespace orvane {

namespace {
// One buffer on screen, one being filled, a few held by slow viewers.
constexpr int kMaxShmSegments = 6;
}

CaptureResult<std::unique_ptr<CaptureStream>> X11CaptureStream::open(const QByteArray& displayName,
                                                                 const CaptureTarget& target,
                                                                 const QRect& displayArea,
                                                                 std::shared_ptr<std::atomic<int>> openStreams) {
    auto connection = std::make_unique<XcbConnection>(displayName);
    if (!connection->ok()) return CaptureResult<std::unique_ptr<CaptureStream>>::failure(connection->failure());
    std::unique_ptr<X11CaptureStream> source(new X11CaptureStream(std::move(connection), target, std::move(openStreams)));
    const QString failure = source->start(displayArea);
    if (!failure.isEmpty()) return CaptureResult<std::unique_ptr<CaptureStream>>::failure(failure);
    return std::unique_ptr<CaptureStream>(std::move(source));
}

X11CaptureStream::X11CaptureStream(std::unique_ptr<XcbConnection> connection, const CaptureTarget& target,
                               std::shared_ptr<std::atomic<int>> openStreams)
    : connection_(std::move(connection)), target_(target), openStreams_(std::move(openStreams)) {
    ++*openStreams_;
}

X11CaptureStream::~X11CaptureStream() {
    xcb_connection_t* c = connection_->get();
    detachPool();
    if (windowPixmap_ != XCB_NONE) xcb_free_pixmap(c, windowPixmap_);
    if (redirected_) xcb_composite_unredirect_window(c, target_.id, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_flush(c);
    --*openStreams_;
}

QString X11CaptureStream::start(const QRect& displayArea) {
    xcb_connection_t* c = connection_->get();
    // Only a target with a region for the pointer ever shows the cursor.
    if (!target_.cursorRegion.isEmpty()) cursor_ = std::make_unique<X11CursorPainter>(c, connection_->root());
    auto shm = xcbWait<xcb_shm_query_version_reply_t>(c, xcb_shm_query_version_reply, xcb_shm_query_version(c));
    // Passing a memfd needs MIT-SHM 1.2.
    hasShm_ = shm && (shm->major_version > 1 || (shm->major_version == 1 && shm->minor_version >= 2));

    if (target_.kind == CaptureTarget::Kind::display) {
        const QRect screen(0, 0, connection_->screen()->width_in_pixels, connection_->screen()->height_in_pixels);
        area_ = displayArea.intersected(screen);
        if (area_.isEmpty()) return errorDescription(CaptureError::noDisplayFound);
        origin_ = area_.topLeft();
        format_ = QImage::Format_RGB32;
        resetPool(area_.size());
        return {};
    }

    auto composite = xcbWait<xcb_composite_query_version_reply_t>(c, xcb_composite_query_version_reply,
                                                                  xcb_composite_query_version(c, 0, 4));
    if (!composite) return QStringLiteral("The X server has no Composite extension");
    XcbReply<xcb_generic_error_t> error(xcb_request_check(
        c, xcb_composite_redirect_window_checked(c, target_.id, XCB_COMPOSITE_REDIRECT_AUTOMATIC)));
    if (error) return errorDescription(CaptureError::windowNotFound);
    redirected_ = true;
    // The pointer is placed against the window's position at start.
    origin_ = target_.cursorRegion.isEmpty() ? QPoint() : target_.cursorRegion.topLeft();
    return nameWindowPixmap();
}

QString X11CaptureStream::nameWindowPixmap() {
    xcb_connection_t* c = connection_->get();
    if (windowPixmap_ != XCB_NONE) xcb_free_pixmap(c, windowPixmap_);
    windowPixmap_ = xcb_generate_id(c);
    // Both requests go out together: one round trip.
    const xcb_get_geometry_cookie_t geometryAsked = xcb_get_geometry(c, target_.id);
    const xcb_void_cookie_t named = xcb_composite_name_window_pixmap_checked(c, target_.id, windowPixmap_);
    auto geometry = xcbWait<xcb_get_geometry_reply_t>(c, xcb_get_geometry_reply, geometryAsked);
    XcbReply<xcb_generic_error_t> error(xcb_request_check(c, named));
    if (!geometry || error) {
        // The name may have been given although the geometry failed.
        if (!error) xcb_free_pixmap(c, windowPixmap_);
        windowPixmap_ = XCB_NONE;
        return geometry ? QStringLiteral("The window is not shown") : errorDescription(CaptureError::windowNotFound);
    }
    area_ = QRect(0, 0, geometry->width, geometry->height);
    format_ = geometry->depth == 32 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    if (area_.size() != poolSize_) resetPool(area_.size());
    return {};
}

void X11CaptureStream::dropQueuedEvents() {
    // Nothing is selected on this connection, but errors of unchecked
    // requests land in the event queue; they must not pile up.
    while (xcb_generic_event_t* event = xcb_poll_for_queued_event(connection_->get())) std::free(event);
}

void X11CaptureStream::resetPool(const QSize& size) {
    detachPool();
    poolSize_ = size;
    if (hasShm_)
        pool_ = X11ShmPool::create(static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) * 4,
                                   kMaxShmSegments);
}

void X11CaptureStream::detachPool() {
    if (!pool_) return;
    // Images still on screen keep the memory; only the server lets go.
    for (int i = 0; i < pool_->segmentCount(); ++i) {
        X11ShmPool::Segment& segment = pool_->segment(i);
        if (segment.serverId) xcb_shm_detach(connection_->get(), segment.serverId);
        segment.serverId = 0;
    }
    pool_.reset();
}

CaptureResult<GrabbedFrame> X11CaptureStream::grabFrame() {
    xcb_drawable_t drawable = connection_->root();
    if (target_.kind == CaptureTarget::Kind::window) {
        // Renamed every frame: a window that is resized or mapped again
        // gets a new pixmap behind it.
        const QString failure = nameWindowPixmap();
        if (!failure.isEmpty()) return CaptureResult<GrabbedFrame>::failure(failure);
        drawable = windowPixmap_;
    }
    // The pointer query goes out with the grab: one round trip for both,
    // and the position belongs to the picture.
    xcb_query_pointer_cookie_t pointerAsked{};
    if (cursor_) pointerAsked = cursor_->askPointer();
    CaptureResult<QImage> grabbed = grab(drawable, area_, format_);
    const std::optional<QPoint> pointer = cursor_ ? cursor_->pointer(pointerAsked) : std::nullopt;
    if (!cursor_) dropQueuedEvents();
    if (!grabbed) return CaptureResult<GrabbedFrame>::failure(grabbed.error());
    QImage image = grabbed.takeValue();

    GrabbedFrame frame;
    frame.pointerInside = pointer && target_.cursorRegion.contains(*pointer);
    // The image is the only reference to its buffer here, so drawing into
    // it copies nothing.
    if (frame.pointerInside) cursor_->paint(image, origin_, *pointer);
    frame.image = FrameFit::fit(image, target_.outputSize);
    return frame;
}

CaptureResult<QImage> X11CaptureStream::grab(xcb_drawable_t drawable, const QRect& area, QImage::Format format) {
    if (!pool_) return grabWithoutShm(drawable, area, format);
    const int index = pool_->acquire();
    if (index < 0) return grabWithoutShm(drawable, area, format);

    xcb_connection_t* c = connection_->get();
    X11ShmPool::Segment& segment = pool_->segment(index);
    if (segment.serverId == 0) {
        const int fd = ::fcntl(segment.fd.get(), F_DUPFD_CLOEXEC, 0);  // XCB closes what it sends
        const std::uint32_t id = xcb_generate_id(c);
        XcbReply<xcb_generic_error_t> error(xcb_request_check(c, xcb_shm_attach_fd_checked(c, id, fd, 0)));
        if (error) {
            pool_->release(index);
            hasShm_ = false;
            pool_.reset();
            return grabWithoutShm(drawable, area, format);
        }
        segment.serverId = id;
    }
    auto reply = xcbWait<xcb_shm_get_image_reply_t>(
        c, xcb_shm_get_image_reply,
        xcb_shm_get_image(c, drawable, static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                          static_cast<std::uint16_t>(area.width()), static_cast<std::uint16_t>(area.height()),
                          ~0u, XCB_IMAGE_FORMAT_Z_PIXMAP, segment.serverId, 0));
    if (!reply) {
        pool_->release(index);
        return CaptureResult<QImage>::failure(QStringLiteral("The X server refused the grab"));
    }
    return pool_->wrap(index, area.width(), area.height(), area.width() * 4, format);
}

CaptureResult<QImage> X11CaptureStream::grabWithoutShm(xcb_drawable_t drawable, const QRect& area,
                                                     QImage::Format format) {
    xcb_connection_t* c = connection_->get();
    auto reply = xcbWait<xcb_get_image_reply_t>(
        c, xcb_get_image_reply,
        xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(area.x()),
                      static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), ~0u));
    if (!reply) return CaptureResult<QImage>::failure(QStringLiteral("The X server refused the grab"));
    const int length = xcb_get_image_data_length(reply.get());
    if (length < area.width() * area.height() * 4)
        return CaptureResult<QImage>::failure(QStringLiteral("Unexpected pixel format"));
    QImage image(area.size(), format);
    const std::uint8_t* data = xcb_get_image_data(reply.get());
    for (int y = 0; y < area.height(); ++y)
        std::memcpy(image.scanLine(y), data + static_cast<std::ptrdiff_t>(y) * area.width() * 4,
                    static_cast<std::size_t>(area.width()) * 4);
    return image;
}

}  // namespace orvane
