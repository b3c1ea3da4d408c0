#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QString>

namespace orvane {

// Owns one connection to the X server and knows its default screen.
class XcbConnection {
public:
    // An empty name uses $DISPLAY.
    explicit XcbConnection(const QByteArray& displayName);
    ~XcbConnection();
    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;

    bool ok() const { return screen_ != nullptr; }
    QString failure() const;  // why ok() is false
    xcb_connection_t* get() const { return connection_; }
    xcb_screen_t* screen() const { return screen_; }
    int screenNumber() const { return screenNumber_; }
    xcb_window_t root() const { return screen_ ? screen_->root : XCB_NONE; }
    xcb_atom_t atom(const char* name) const;  // XCB_NONE when it fails

private:
    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
    int screenNumber_ = 0;
};

}  // namespace orvane
