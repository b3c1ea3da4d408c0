#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

namespace orvane::test {

// The tests' own hand on the private X server: plain windows with exactly
// the properties a case needs, the pointer, and what the server shows.
class X11TestClient {
public:
    explicit X11TestClient(const QByteArray& displayName);
    ~X11TestClient();

    struct RawWindow {
        QString title;                        // empty: no name property at all
        QString wmClass;                      // empty: no WM_CLASS
        std::optional<std::uint32_t> pid;     // _NET_WM_PID
        bool dock = false;                    // _NET_WM_WINDOW_TYPE_DOCK
        QRect geometry{100, 100, 200, 150};
        QColor background = Qt::white;        // on a 24-bit true-colour screen
    };
    // Creates and maps the window; openbox then manages it.
    xcb_window_t createWindow(const RawWindow& spec);
    // Closes it, as an application that quits does.
    void destroyWindow(xcb_window_t window);
    void warpPointer(int x, int y);
    std::optional<xcb_window_t> activeWindow();
    // What the screen shows in that rectangle right now.
    QImage screenPixels(const QRect& area);

private:
    xcb_atom_t atom(const char* name);

    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
};

// A Qt window painted in one colour. Override-redirect windows stay exactly
// where they are put and are not in the window manager's client list.
std::unique_ptr<QWidget> colourWindow(const QColor& colour, const QRect& geometry, const QString& title,
                                      bool managed);

// Pixels in the rectangle that differ from colour by more than tolerance
// in any channel.
int pixelsUnlike(const QImage& image, const QRect& area, const QColor& colour, int tolerance = 8);

}  // namespace orvane::test
