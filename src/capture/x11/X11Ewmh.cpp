#include "capture/x11/X11Ewmh.h"

#include "capture/x11/XcbConnection.h"

namespace orvane {

X11Ewmh::X11Ewmh(const XcbConnection& connection) {
    if (!connection.ok()) return;
    xcb_intern_atom_cookie_t* cookies = xcb_ewmh_init_atoms(connection.get(), &ewmh_);
    ok_ = xcb_ewmh_init_atoms_replies(&ewmh_, cookies, nullptr) != 0;
}

X11Ewmh::~X11Ewmh() {
    if (ok_) xcb_ewmh_connection_wipe(&ewmh_);
}

}  // namespace orvane
