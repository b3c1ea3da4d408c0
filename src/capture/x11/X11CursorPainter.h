#pragma once

#include <xcb/xcb.h>

#include <QImage>
#include <QPoint>

#include <cstdint>
#include <optional>

namespace orvane {

// Polls the pointer and draws the XFixes cursor image into frames. Lives
// on the capture thread with the connection it is given, whose events it
// reads: the cursor image is fetched again only after the server says the
// cursor changed, not once a frame.
class X11CursorPainter {
public:
    X11CursorPainter(xcb_connection_t* connection, xcb_window_t root);

    // Sends the pointer query without waiting, so that it can share one
    // round trip with a grab; every asked query must be answered with
    // pointer(cookie).
    xcb_query_pointer_cookie_t askPointer() const;
    // The pointer in screen coordinates; nothing if it is on another screen.
    // Also reads the cursor notices that came in meanwhile, so call it once
    // a frame even when nothing is drawn: they would pile up otherwise.
    std::optional<QPoint> pointer(xcb_query_pointer_cookie_t asked);
    std::optional<QPoint> pointer() { return pointer(askPointer()); }

    // Draws the current cursor with its hot spot at pointer - origin.
    void paint(QImage& frame, const QPoint& origin, const QPoint& pointer);

private:
    void readNotices();
    void refreshCursor();

    xcb_connection_t* connection_;
    xcb_window_t root_;
    bool hasXFixes_ = false;
    std::uint8_t cursorNotifyEvent_ = 0;  // response type of XFixes' cursor notices
    bool cursorStale_ = true;
    QImage cursor_;  // premultiplied ARGB, a copy of the server's image
    QPoint hotSpot_;
};

}  // namespace orvane
