#include "capture/x11/XcbConnection.h"

#include <cstring>

#include "capture/x11/XcbReply.h"

namespace orvane {

XcbConnection::XcbConnection(const QByteArray& displayName) {
    connection_ = xcb_connect(displayName.isEmpty() ? nullptr : displayName.constData(), &screenNumber_);
    if (xcb_connection_has_error(connection_)) return;
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (int i = 0; it.rem && i < screenNumber_; ++i) xcb_screen_next(&it);
    if (it.rem) screen_ = it.data;
}

XcbConnection::~XcbConnection() {
    if (connection_) xcb_disconnect(connection_);
}

QString XcbConnection::failure() const {
    if (ok()) return {};
    return QStringLiteral("Cannot connect to the X server");
}

xcb_atom_t XcbConnection::atom(const char* name) const {
    auto reply = xcbWait<xcb_intern_atom_reply_t>(
        connection_, xcb_intern_atom_reply,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name));
    return reply ? reply->atom : XCB_NONE;
}

}  // namespace orvane
