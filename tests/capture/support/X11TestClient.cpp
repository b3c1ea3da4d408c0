#include "support/X11TestClient.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace orvane::test {

X11TestClient::X11TestClient(const QByteArray& displayName) {
    connection_ = xcb_connect(displayName.constData(), nullptr);
    if (!xcb_connection_has_error(connection_)) screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

X11TestClient::~X11TestClient() { xcb_disconnect(connection_); }

xcb_atom_t X11TestClient::atom(const char* name) {
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
        connection_, xcb_intern_atom(connection_, 0, static_cast<uint16_t>(std::strlen(name)), name), nullptr);
    const xcb_atom_t result = reply ? reply->atom : XCB_NONE;
    free(reply);
    return result;
}

xcb_window_t X11TestClient::createWindow(const RawWindow& spec) {
    const xcb_window_t window = xcb_generate_id(connection_);
    const uint32_t values[] = {static_cast<uint32_t>(spec.background.rgb() & 0xffffffu)};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root,
                      static_cast<int16_t>(spec.geometry.x()), static_cast<int16_t>(spec.geometry.y()),
                      static_cast<uint16_t>(spec.geometry.width()), static_cast<uint16_t>(spec.geometry.height()), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_->root_visual, XCB_CW_BACK_PIXEL, values);
    if (!spec.title.isEmpty()) {
        const QByteArray utf8 = spec.title.toUtf8();
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8,
                            static_cast<uint32_t>(utf8.size()), utf8.constData());
    }
    if (!spec.wmClass.isEmpty()) {
        // instance NUL class NUL
        const QByteArray value = spec.wmClass.toLower().toUtf8() + '\0' + spec.wmClass.toUtf8() + '\0';
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            static_cast<uint32_t>(value.size()), value.constData());
    }
    if (spec.pid) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1,
                            &*spec.pid);
    }
    if (spec.dock) {
        const xcb_atom_t dock = atom("_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32,
                            1, &dock);
    }
    xcb_map_window(connection_, window);
    xcb_flush(connection_);
    return window;
}

void X11TestClient::warpPointer(int x, int y) {
    xcb_warp_pointer(connection_, XCB_NONE, screen_->root, 0, 0, 0, 0, static_cast<int16_t>(x),
                     static_cast<int16_t>(y));
    xcb_flush(connection_);
}

std::optional<xcb_window_t> X11TestClient::activeWindow() {
    xcb_get_property_reply_t* reply = xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, screen_->root, atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 0, 1),
        nullptr);
    std::optional<xcb_window_t> result;
    if (reply && xcb_get_property_value_length(reply) == 4)
        result = *static_cast<xcb_window_t*>(xcb_get_property_value(reply));
    free(reply);
    return result;
}

QImage X11TestClient::screenPixels(const QRect& area) {
    xcb_get_image_reply_t* reply = xcb_get_image_reply(
        connection_,
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root, static_cast<int16_t>(area.x()),
                      static_cast<int16_t>(area.y()), static_cast<uint16_t>(area.width()),
                      static_cast<uint16_t>(area.height()), ~0u),
        nullptr);
    if (!reply) return {};
    QImage image(xcb_get_image_data(reply), area.width(), area.height(), area.width() * 4, QImage::Format_RGB32);
    QImage copy = image.copy();
    free(reply);
    return copy;
}

std::unique_ptr<QWidget> colourWindow(const QColor& colour, const QRect& geometry, const QString& title,
                                      bool managed) {
    auto widget = std::make_unique<QWidget>(nullptr, managed ? Qt::Window : Qt::Window | Qt::X11BypassWindowManagerHint);
    widget->setWindowTitle(title);
    widget->setAutoFillBackground(true);
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, colour);
    widget->setPalette(palette);
    widget->setGeometry(geometry);
    widget->show();
    return widget;
}

int pixelsUnlike(const QImage& image, const QRect& area, const QColor& colour, int tolerance) {
    int count = 0;
    const QRect clipped = area.intersected(image.rect());
    for (int y = clipped.top(); y <= clipped.bottom(); ++y) {
        for (int x = clipped.left(); x <= clipped.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (std::abs(c.red() - colour.red()) > tolerance || std::abs(c.green() - colour.green()) > tolerance ||
                std::abs(c.blue() - colour.blue()) > tolerance)
                ++count;
        }
    }
    return count;
}

void X11TestClient::destroyWindow(xcb_window_t window) {
    xcb_destroy_window(connection_, window);
    xcb_flush(connection_);
}

}  // namespace orvane::test
