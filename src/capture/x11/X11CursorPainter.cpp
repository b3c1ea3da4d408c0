#include "capture/x11/X11CursorPainter.h"

#include <xcb/xfixes.h>

#include <QPainter>

#include "capture/x11/XcbReply.h"

namespace orvane {

X11CursorPainter::X11CursorPainter(xcb_connection_t* connection, xcb_window_t root)
    : connection_(connection), root_(root) {
    auto version = xcbWait<xcb_xfixes_query_version_reply_t>(connection_, xcb_xfixes_query_version_reply,
                                                             xcb_xfixes_query_version(connection_, 4, 0));
    hasXFixes_ = version && version->major_version >= 1;
}

std::optional<QPoint> X11CursorPainter::pointer() const {
    auto reply = xcbWait<xcb_query_pointer_reply_t>(connection_, xcb_query_pointer_reply,
                                                    xcb_query_pointer(connection_, root_));
    if (!reply || !reply->same_screen) return std::nullopt;
    return QPoint(reply->root_x, reply->root_y);
}

void X11CursorPainter::paint(QImage& frame, const QPoint& origin, const QPoint& pointer) const {
    if (!hasXFixes_) return;
    auto cursor = xcbWait<xcb_xfixes_get_cursor_image_reply_t>(connection_, xcb_xfixes_get_cursor_image_reply,
                                                               xcb_xfixes_get_cursor_image(connection_));
    if (!cursor || cursor->width == 0 || cursor->height == 0) return;
    // The cursor arrives as premultiplied ARGB, one 32-bit word a pixel.
    const QImage image(reinterpret_cast<const uchar*>(xcb_xfixes_get_cursor_image_cursor_image(cursor.get())),
                       cursor->width, cursor->height, cursor->width * 4, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&frame);
    painter.drawImage(pointer - origin - QPoint(cursor->xhot, cursor->yhot), image);
}

}  // namespace orvane
