#include "capture/x11/X11WindowList.h"

#include <xcb/xcb_icccm.h>

#include <QFile>

#include "capture/x11/X11Ewmh.h"
#include "capture/x11/XcbConnection.h"
#include "capture/x11/XcbReply.h"

namespace orvane {

namespace {

struct Cookies {
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t position;
    xcb_get_property_cookie_t netName, wmName, wmClass, pid, type, state;
};

std::optional<QString> processName(std::uint32_t pid) {
    QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
    if (!comm.open(QIODevice::ReadOnly)) return std::nullopt;
    const QString name = QString::fromUtf8(comm.readAll()).trimmed();
    if (name.isEmpty()) return std::nullopt;
    return name;
}

// Layers as a stacking order would number them: the desktop below normal
// windows, panels and keep-above windows over them.
int layerOf(xcb_ewmh_connection_t* ewmh, const xcb_ewmh_get_atoms_reply_t* types,
            const xcb_ewmh_get_atoms_reply_t* states) {
    if (types) {
        for (std::uint32_t i = 0; i < types->atoms_len; ++i) {
            const xcb_atom_t type = types->atoms[i];
            if (type == ewmh->_NET_WM_WINDOW_TYPE_NORMAL || type == ewmh->_NET_WM_WINDOW_TYPE_DIALOG ||
                type == ewmh->_NET_WM_WINDOW_TYPE_UTILITY)
                break;
            if (type == ewmh->_NET_WM_WINDOW_TYPE_DESKTOP) return -1;
            if (type == ewmh->_NET_WM_WINDOW_TYPE_DOCK) return 20;
            if (type == ewmh->_NET_WM_WINDOW_TYPE_NOTIFICATION || type == ewmh->_NET_WM_WINDOW_TYPE_SPLASH) return 25;
            if (type == ewmh->_NET_WM_WINDOW_TYPE_TOOLBAR || type == ewmh->_NET_WM_WINDOW_TYPE_MENU) return 3;
        }
    }
    if (states) {
        for (std::uint32_t i = 0; i < states->atoms_len; ++i) {
            if (states->atoms[i] == ewmh->_NET_WM_STATE_ABOVE) return 3;
            if (states->atoms[i] == ewmh->_NET_WM_STATE_BELOW) return -1;
        }
    }
    return 0;
}

ShareableWindow collect(xcb_connection_t* c, xcb_ewmh_connection_t* ewmh, xcb_window_t window, Cookies& k,
                        bool& onScreen) {
    ShareableWindow result;
    result.id = window;

    auto attributes = xcbWait<xcb_get_window_attributes_reply_t>(c, xcb_get_window_attributes_reply, k.attributes);
    auto geometry = xcbWait<xcb_get_geometry_reply_t>(c, xcb_get_geometry_reply, k.geometry);
    auto position = xcbWait<xcb_translate_coordinates_reply_t>(c, xcb_translate_coordinates_reply, k.position);
    onScreen = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    if (geometry && position)
        result.frame = QRect(position->dst_x, position->dst_y, geometry->width, geometry->height);

    xcb_ewmh_get_utf8_strings_reply_t netName;
    if (xcb_ewmh_get_wm_name_reply(ewmh, k.netName, &netName, nullptr)) {
        result.title = QString::fromUtf8(netName.strings, static_cast<qsizetype>(netName.strings_len));
        xcb_ewmh_get_utf8_strings_reply_wipe(&netName);
    }
    xcb_icccm_get_text_property_reply_t wmName;
    if (xcb_icccm_get_wm_name_reply(c, k.wmName, &wmName, nullptr)) {
        if (result.title.isEmpty()) {
            const auto length = static_cast<qsizetype>(wmName.name_len);
            result.title = wmName.encoding == XCB_ATOM_STRING ? QString::fromLatin1(wmName.name, length)
                                                              : QString::fromUtf8(wmName.name, length);
        }
        xcb_icccm_get_text_property_reply_wipe(&wmName);
    }
    xcb_icccm_get_wm_class_reply_t wmClass;
    if (xcb_icccm_get_wm_class_reply(c, k.wmClass, &wmClass, nullptr)) {
        const QString className = QString::fromLocal8Bit(wmClass.class_name ? wmClass.class_name : "");
        if (!className.isEmpty()) result.applicationName = className;
        xcb_icccm_get_wm_class_reply_wipe(&wmClass);
    }
    std::uint32_t pid = 0;
    if (xcb_ewmh_get_wm_pid_reply(ewmh, k.pid, &pid, nullptr) && !result.applicationName && pid > 0)
        result.applicationName = processName(pid);

    xcb_ewmh_get_atoms_reply_t types, states;
    const bool hasTypes = xcb_ewmh_get_wm_window_type_reply(ewmh, k.type, &types, nullptr);
    const bool hasStates = xcb_ewmh_get_wm_state_reply(ewmh, k.state, &states, nullptr);
    result.windowLayer = layerOf(ewmh, hasTypes ? &types : nullptr, hasStates ? &states : nullptr);
    if (hasTypes) xcb_ewmh_get_atoms_reply_wipe(&types);
    if (hasStates) xcb_ewmh_get_atoms_reply_wipe(&states);
    return result;
}

}  // namespace

CaptureResult<std::vector<ShareableWindow>> X11WindowList::list(const XcbConnection& connection, X11Ewmh& ewmh) {
    using Result = CaptureResult<std::vector<ShareableWindow>>;
    if (!connection.ok()) return Result::failure(connection.failure());
    if (!ewmh.ok()) return Result::failure(QStringLiteral("The X server did not answer"));
    xcb_connection_t* c = connection.get();
    xcb_ewmh_connection_t* e = ewmh.get();

    std::vector<ShareableWindow> windows;
    xcb_ewmh_get_windows_reply_t clients;
    // No window manager, no client list: nothing to choose from.
    if (!xcb_ewmh_get_client_list_reply(e, xcb_ewmh_get_client_list(e, connection.screenNumber()), &clients, nullptr))
        return windows;

    // Every request goes out before the first reply is read.
    std::vector<Cookies> cookies(clients.windows_len);
    for (std::uint32_t i = 0; i < clients.windows_len; ++i) {
        const xcb_window_t w = clients.windows[i];
        Cookies& k = cookies[i];
        k.attributes = xcb_get_window_attributes(c, w);
        k.geometry = xcb_get_geometry(c, w);
        k.position = xcb_translate_coordinates(c, w, connection.root(), 0, 0);
        k.netName = xcb_ewmh_get_wm_name(e, w);
        k.wmName = xcb_icccm_get_wm_name(c, w);
        k.wmClass = xcb_icccm_get_wm_class(c, w);
        k.pid = xcb_ewmh_get_wm_pid(e, w);
        k.type = xcb_ewmh_get_wm_window_type(e, w);
        k.state = xcb_ewmh_get_wm_state(e, w);
    }
    for (std::uint32_t i = 0; i < clients.windows_len; ++i) {
        bool onScreen = false;
        ShareableWindow window = collect(c, e, clients.windows[i], cookies[i], onScreen);
        if (onScreen) windows.push_back(std::move(window));
    }
    xcb_ewmh_get_windows_reply_wipe(&clients);
    return windows;
}

}  // namespace orvane
