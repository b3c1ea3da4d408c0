#include "capture/x11/X11CursorPainter.h"

#include <xcb/xfixes.h>

#include <QPainter>

#include <algorithm>
#include <cstdlib>

#include "capture/x11/XcbReply.h"

namespace orvane {

namespace {

// One premultiplied channel of src over dst, with the usual rounding
// division by 255.
inline std::uint32_t over(std::uint32_t src, std::uint32_t dst, std::uint32_t inverseAlpha) {
    const std::uint32_t scaled = dst * inverseAlpha + 128;
    return src + ((scaled + (scaled >> 8)) >> 8);
}

// Premultiplied source over a 32-bit frame, clipped to the frame. Opaque
// frames stay opaque: their alpha byte is 255 and stays so.
void blend(QImage& frame, const QImage& cursor, const QPoint& at) {
    const QRect area = QRect(at, cursor.size()).intersected(frame.rect());
    if (area.isEmpty()) return;
    const int fromX = area.x() - at.x();
    const int fromY = area.y() - at.y();
    for (int y = 0; y < area.height(); ++y) {
        const auto* src = reinterpret_cast<const std::uint32_t*>(cursor.constScanLine(fromY + y)) + fromX;
        auto* dst = reinterpret_cast<std::uint32_t*>(frame.scanLine(area.y() + y)) + area.x();
        for (int x = 0; x < area.width(); ++x) {
            const std::uint32_t s = src[x];
            const std::uint32_t alpha = s >> 24;
            if (alpha == 0) continue;
            if (alpha == 255) {
                dst[x] = s;
                continue;
            }
            const std::uint32_t d = dst[x];
            const std::uint32_t inverse = 255 - alpha;
            dst[x] = over(alpha, d >> 24, inverse) << 24 | over((s >> 16) & 0xff, (d >> 16) & 0xff, inverse) << 16 |
                     over((s >> 8) & 0xff, (d >> 8) & 0xff, inverse) << 8 | over(s & 0xff, d & 0xff, inverse);
        }
    }
}

}  // namespace

X11CursorPainter::X11CursorPainter(xcb_connection_t* connection, xcb_window_t root)
    : connection_(connection), root_(root) {
    auto version = xcbWait<xcb_xfixes_query_version_reply_t>(connection_, xcb_xfixes_query_version_reply,
                                                             xcb_xfixes_query_version(connection_, 4, 0));
    hasXFixes_ = version && version->major_version >= 1;
    if (!hasXFixes_) return;
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection_, &xcb_xfixes_id);
    if (extension && extension->present) {
        cursorNotifyEvent_ = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_CURSOR_NOTIFY);
        xcb_xfixes_select_cursor_input(connection_, root_, XCB_XFIXES_CURSOR_NOTIFY_MASK_DISPLAY_CURSOR);
    }
}

xcb_query_pointer_cookie_t X11CursorPainter::askPointer() const { return xcb_query_pointer(connection_, root_); }

std::optional<QPoint> X11CursorPainter::pointer(xcb_query_pointer_cookie_t asked) {
    auto reply = xcbWait<xcb_query_pointer_reply_t>(connection_, xcb_query_pointer_reply, asked);
    readNotices();
    if (!reply || !reply->same_screen) return std::nullopt;
    return QPoint(reply->root_x, reply->root_y);
}

void X11CursorPainter::readNotices() {
    // Notices come in with the replies the capture waits for anyway; only
    // what is already queued is read, which costs no system call. Anything
    // else on the queue (errors of unchecked requests) is dropped here too.
    while (xcb_generic_event_t* event = xcb_poll_for_queued_event(connection_)) {
        if (cursorNotifyEvent_ != 0 && (event->response_type & 0x7f) == cursorNotifyEvent_) cursorStale_ = true;
        std::free(event);
    }
}

void X11CursorPainter::refreshCursor() {
    readNotices();
    // Without notices the image is fetched every time.
    if (!cursorStale_ && cursorNotifyEvent_ != 0) return;
    auto reply = xcbWait<xcb_xfixes_get_cursor_image_reply_t>(connection_, xcb_xfixes_get_cursor_image_reply,
                                                              xcb_xfixes_get_cursor_image(connection_));
    if (!reply) return;  // stays stale; the next frame asks again
    cursorStale_ = false;
    if (reply->width == 0 || reply->height == 0) {
        cursor_ = QImage();
        return;
    }
    // The cursor arrives as premultiplied ARGB, one 32-bit word a pixel.
    cursor_ = QImage(reinterpret_cast<const uchar*>(xcb_xfixes_get_cursor_image_cursor_image(reply.get())),
                     reply->width, reply->height, reply->width * 4, QImage::Format_ARGB32_Premultiplied)
                  .copy();
    hotSpot_ = QPoint(reply->xhot, reply->yhot);
}

void X11CursorPainter::paint(QImage& frame, const QPoint& origin, const QPoint& pointer) {
    if (!hasXFixes_) return;
    refreshCursor();
    if (cursor_.isNull()) return;
    const QPoint at = pointer - origin - hotSpot_;
    if (frame.format() == QImage::Format_RGB32 || frame.format() == QImage::Format_ARGB32_Premultiplied) {
        blend(frame, cursor_, at);
        return;
    }
    QPainter painter(&frame);
    painter.drawImage(at, cursor_);
}

}  // namespace orvane
