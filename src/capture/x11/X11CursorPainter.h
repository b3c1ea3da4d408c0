#pragma once

#include <xcb/xcb.h>

#include <QImage>
#include <QPoint>

#include <optional>

namespace orvane {

// Polls the pointer and draws the XFixes cursor image into frames. Lives
// on the capture thread with the connection it is given.
class X11CursorPainter {
public:
    X11CursorPainter(xcb_connection_t* connection, xcb_window_t root);

    // The pointer in screen coordinates; nothing if it is on another screen.
    std::optional<QPoint> pointer() const;
    // Draws the current cursor with its hot spot at pointer - origin.
    void paint(QImage& frame, const QPoint& origin, const QPoint& pointer) const;

private:
    xcb_connection_t* connection_;
    xcb_window_t root_;
    bool hasXFixes_ = false;
};

}  // namespace orvane
