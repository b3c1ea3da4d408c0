#include "capture/x11/X11DisplayList.h"

#include <xcb/randr.h>

#include "capture/x11/X11MonitorIds.h"
#include "capture/x11/XcbConnection.h"
#include "capture/x11/XcbReply.h"

namespace orvane {

CaptureResult<std::vector<CaptureDisplay>> X11DisplayList::list(const XcbConnection& connection) {
    using Result = CaptureResult<std::vector<CaptureDisplay>>;
    if (!connection.ok()) return Result::failure(connection.failure());
    xcb_connection_t* c = connection.get();
    const xcb_screen_t* screen = connection.screen();

    auto version = xcbWait<xcb_randr_query_version_reply_t>(c, xcb_randr_query_version_reply,
                                                            xcb_randr_query_version(c, 1, 5));
    std::vector<CaptureDisplay> displays;
    if (!version || (version->major_version == 1 && version->minor_version < 5)) {
        // No monitors to ask for: the whole screen is the one display.
        CaptureDisplay whole;
        whole.id = screen->root;
        whole.width = screen->width_in_pixels;
        whole.height = screen->height_in_pixels;
        whole.name = QStringLiteral("Main Display");
        whole.frame = QRect(0, 0, whole.width, whole.height);
        displays.push_back(whole);
        return displays;
    }

    auto primary = xcbWait<xcb_randr_get_output_primary_reply_t>(c, xcb_randr_get_output_primary_reply,
                                                                 xcb_randr_get_output_primary(c, screen->root));
    auto monitors = xcbWait<xcb_randr_get_monitors_reply_t>(c, xcb_randr_get_monitors_reply,
                                                            xcb_randr_get_monitors(c, screen->root, 1));
    if (!monitors) return Result::failure(QStringLiteral("The X server did not list its monitors"));

    // The names, which ids are made from, all asked for at once: one round trip.
    std::vector<xcb_get_atom_name_cookie_t> nameAsked;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(monitors.get()); it.rem; xcb_randr_monitor_info_next(&it))
        nameAsked.push_back(xcb_get_atom_name(c, it.data->name));
    std::vector<QByteArray> names;
    bool allNamed = true;
    for (const xcb_get_atom_name_cookie_t cookie : nameAsked) {
        auto name = xcbWait<xcb_get_atom_name_reply_t>(c, xcb_get_atom_name_reply, cookie);
        allNamed = allNamed && name;
        names.push_back(name ? QByteArray(xcb_get_atom_name_name(name.get()), xcb_get_atom_name_name_length(name.get()))
                             : QByteArray());
    }
    if (!allNamed) return Result::failure(QStringLiteral("The X server did not name its monitors"));

    int mainIndex = -1;
    int primaryOutputIndex = -1;
    std::vector<X11MonitorIds::Monitor> identities;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(monitors.get()); it.rem; xcb_randr_monitor_info_next(&it)) {
        const xcb_randr_monitor_info_t* info = it.data;
        const xcb_randr_output_t* outputs = xcb_randr_monitor_info_outputs(info);
        const int outputCount = xcb_randr_monitor_info_outputs_length(info);
        const int index = static_cast<int>(displays.size());
        X11MonitorIds::Monitor identity;
        identity.outputs.assign(outputs, outputs + outputCount);
        identity.name = names[static_cast<std::size_t>(index)];
        identities.push_back(std::move(identity));

        CaptureDisplay display;
        display.width = info->width;
        display.height = info->height;
        display.frame = QRect(info->x, info->y, info->width, info->height);
        if (info->primary && mainIndex < 0) mainIndex = index;
        for (int o = 0; o < outputCount && primary; ++o)
            if (outputs[o] == primary->output && primaryOutputIndex < 0) primaryOutputIndex = index;
        displays.push_back(display);
    }
    const std::vector<std::uint32_t> ids = X11MonitorIds::assign(identities);
    for (std::size_t i = 0; i < displays.size(); ++i) displays[i].id = ids[i];
    if (mainIndex < 0) mainIndex = primaryOutputIndex >= 0 ? primaryOutputIndex : 0;
    for (int i = 0; i < static_cast<int>(displays.size()); ++i) {
        CaptureDisplay& display = displays[static_cast<std::size_t>(i)];
        display.name = i == mainIndex ? QStringLiteral("Main Display") : QStringLiteral("Display %1").arg(display.id);
    }
    return displays;
}

}  // namespace orvane
