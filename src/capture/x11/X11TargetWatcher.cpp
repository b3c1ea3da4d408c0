#include "capture/x11/X11TargetWatcher.h"

#include <xcb/randr.h>

#include <QSocketNotifier>

#include <cstdlib>

#include "capture/x11/XcbConnection.h"
#include "capture/x11/XcbReply.h"
#include "document/Log.h"

namespace orvane {

X11TargetWatcher::X11TargetWatcher(QObject* parent) : QObject(parent) {
    auto connection = std::make_unique<XcbConnection>(QByteArray());
    // No server (or none reachable) is a state, not news: say nothing.
    if (!connection->ok()) return;
    xcb_connection_t* c = connection->get();
    const xcb_window_t root = connection->root();

    const xcb_query_extension_reply_t* randr = xcb_get_extension_data(c, &xcb_randr_id);
    if (randr && randr->present) {
        // The server sends RandR events only to clients that said which
        // version they speak.
        auto version = xcbWait<xcb_randr_query_version_reply_t>(c, xcb_randr_query_version_reply,
                                                                xcb_randr_query_version(c, 1, 5));
        if (version) {
            randrEventBase_ = randr->first_event;
            xcb_randr_select_input(c, root,
                                   XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                       XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
        }
    }
    clientListAtom_ = connection->atom("_NET_CLIENT_LIST");
    // Structure: the server reconfigures the root window when a monitor is
    // set or deleted. Properties: _NET_CLIENT_LIST.
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    // Checked: once this returns, every later change reaches us.
    XcbReply<xcb_generic_error_t> refused(
        xcb_request_check(c, xcb_change_window_attributes_checked(c, root, XCB_CW_EVENT_MASK, &mask)));
    if (refused || xcb_connection_has_error(c)) return;

    connection_ = std::move(connection);
    notifier_ = new QSocketNotifier(xcb_get_file_descriptor(c), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &X11TargetWatcher::readEvents);
    // The round trips above may have queued events already read from the
    // socket, which the notifier would not report.
    QMetaObject::invokeMethod(this, &X11TargetWatcher::readEvents, Qt::QueuedConnection);
}

X11TargetWatcher::~X11TargetWatcher() {
    // The notifier goes before the connection closes its socket.
    delete notifier_;
}

void X11TargetWatcher::readEvents() {
    if (!connection_) return;
    xcb_connection_t* c = connection_->get();
    const xcb_window_t root = connection_->root();
    bool changed = false;
    while (xcb_generic_event_t* event = xcb_poll_for_event(c)) {
        const int type = event->response_type & 0x7f;
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto* property = reinterpret_cast<const xcb_property_notify_event_t*>(event);
            changed = changed || (property->window == root && property->atom == clientListAtom_);
        } else if (type == XCB_CONFIGURE_NOTIFY) {
            changed = changed || reinterpret_cast<const xcb_configure_notify_event_t*>(event)->window == root;
        } else if (randrEventBase_ >= 0 && (type == randrEventBase_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                            type == randrEventBase_ + XCB_RANDR_NOTIFY)) {
            changed = true;
        }
        // Anything else (errors of our own requests included) is dropped.
        std::free(event);
    }
    if (xcb_connection_has_error(c)) {
        // A dead socket reads as ready for ever: stop listening to it.
        stop();
        return;
    }
    if (changed && !announcing_) {
        announcing_ = true;
        QMetaObject::invokeMethod(this, &X11TargetWatcher::announce, Qt::QueuedConnection);
    }
}

void X11TargetWatcher::announce() {
    announcing_ = false;
    emit targetsChanged();
}

void X11TargetWatcher::stop() {
    logLine("⚠️ Lost the X server: displays and windows are no longer watched");
    notifier_->setEnabled(false);
    // This runs inside the notifier's own signal: it goes once that returns.
    notifier_->deleteLater();
    notifier_ = nullptr;
    connection_.reset();
}

}  // namespace orvane
