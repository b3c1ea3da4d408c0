#pragma once

#include <xcb/xcb_ewmh.h>

namespace orvane {

class XcbConnection;

// Owns the EWMH atom table of one connection.
class X11Ewmh {
public:
    explicit X11Ewmh(const XcbConnection& connection);
    ~X11Ewmh();
    X11Ewmh(const X11Ewmh&) = delete;
    X11Ewmh& operator=(const X11Ewmh&) = delete;

    bool ok() const { return ok_; }
    xcb_ewmh_connection_t* get() { return &ewmh_; }

private:
    xcb_ewmh_connection_t ewmh_{};
    bool ok_ = false;
};

}  // namespace orvane
