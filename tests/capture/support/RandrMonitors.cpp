#include "support/RandrMonitors.h"

#include <xcb/randr.h>

#include <QProcess>

#include <cstdlib>
#include <memory>

namespace orvane::test {

namespace {

struct Disconnect {
    void operator()(xcb_connection_t* c) const { xcb_disconnect(c); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

Connection connect(const QByteArray& displayName) {
    return Connection(xcb_connect(displayName.constData(), nullptr));
}

xcb_window_t rootOf(xcb_connection_t* c) { return xcb_setup_roots_iterator(xcb_get_setup(c)).data->root; }

}  // namespace

QString RandrMonitors::xrandr(const QStringList& arguments) const {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(displayName_));
    process.setProcessEnvironment(env);
    process.start(QStringLiteral("xrandr"), arguments);
    if (!process.waitForFinished(10000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return QStringLiteral("xrandr ") + arguments.join(' ') + QStringLiteral(" failed: ") +
               QString::fromLocal8Bit(process.readAllStandardError());
    return {};
}

QString RandrMonitors::splitLeftRight() const {
    for (const QStringList& args : {QStringList{"--setmonitor", "Left", "960/254x1080/286+0+0", "screen"},
                                    QStringList{"--setmonitor", "Right", "960/254x1080/286+960+0", "none"}}) {
        const QString failure = xrandr(args);
        if (!failure.isEmpty()) return failure;
    }
    return {};
}

std::uint32_t RandrMonitors::outputId(const QByteArray& name) const {
    Connection c = connect(displayName_);
    if (xcb_connection_has_error(c.get())) return 0;
    xcb_randr_get_screen_resources_reply_t* resources = xcb_randr_get_screen_resources_reply(
        c.get(), xcb_randr_get_screen_resources(c.get(), rootOf(c.get())), nullptr);
    if (!resources) return 0;
    std::uint32_t found = 0;
    const xcb_randr_output_t* outputs = xcb_randr_get_screen_resources_outputs(resources);
    for (int i = 0; i < xcb_randr_get_screen_resources_outputs_length(resources) && !found; ++i) {
        xcb_randr_get_output_info_reply_t* info = xcb_randr_get_output_info_reply(
            c.get(), xcb_randr_get_output_info(c.get(), outputs[i], resources->config_timestamp), nullptr);
        if (!info) continue;
        const QByteArray outputName(reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info)),
                                    xcb_randr_get_output_info_name_length(info));
        if (outputName == name) found = outputs[i];
        std::free(info);
    }
    std::free(resources);
    return found;
}

xcb_atom_t RandrMonitors::atom(const QByteArray& name, bool intern) const {
    Connection c = connect(displayName_);
    if (xcb_connection_has_error(c.get())) return XCB_NONE;
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
        c.get(), xcb_intern_atom(c.get(), intern ? 0 : 1, static_cast<std::uint16_t>(name.size()), name.constData()),
        nullptr);
    const xcb_atom_t result = reply ? reply->atom : XCB_NONE;
    std::free(reply);
    return result;
}

void RandrMonitors::touchRootProperty(const QByteArray& name) const {
    Connection c = connect(displayName_);
    if (xcb_connection_has_error(c.get())) return;
    const xcb_atom_t property = atom(name, true);
    const std::uint32_t value = 1;
    xcb_change_property(c.get(), XCB_PROP_MODE_REPLACE, rootOf(c.get()), property, XCB_ATOM_CARDINAL, 32, 1, &value);
    // A round trip: the change is made before this returns.
    std::free(xcb_get_input_focus_reply(c.get(), xcb_get_input_focus(c.get()), nullptr));
}

}  // namespace orvane::test
