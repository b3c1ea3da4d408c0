#include "capture/x11/X11DisplayList.h"

#include <xcb/randr.h>

#include "capture/x11/XcbConnection.h"
#include "capture/x11/XcbReply.h"

namespace orvane {

namespace {
constexpr std::uint32_t kOutputlessMonitorBit = 0x80000000u;
}

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

    int mainIndex = -1;
    int primaryOutputIndex = -1;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(monitors.get()); it.rem; xcb_randr_monitor_info_next(&it)) {
        const xcb_randr_monitor_info_t* info = it.data;
        const xcb_randr_output_t* outputs = xcb_randr_monitor_info_outputs(info);
        const int outputCount = xcb_randr_monitor_info_outputs_length(info);
        CaptureDisplay display;
        display.id = outputCount > 0 ? outputs[0] : (kOutputlessMonitorBit | info->name);
        display.width = info->width;
        display.height = info->height;
        display.frame = QRect(info->x, info->y, info->width, info->height);
        const int index = static_cast<int>(displays.size());
        if (info->primary && mainIndex < 0) mainIndex = index;
        for (int o = 0; o < outputCount && primary; ++o)
            if (outputs[o] == primary->output && primaryOutputIndex < 0) primaryOutputIndex = index;
        displays.push_back(display);
    }
    if (mainIndex < 0) mainIndex = primaryOutputIndex >= 0 ? primaryOutputIndex : 0;
    for (int i = 0; i < static_cast<int>(displays.size()); ++i) {
        CaptureDisplay& display = displays[static_cast<std::size_t>(i)];
        display.name = i == mainIndex ? QStringLiteral("Main Display") : QStringLiteral("Display %1").arg(display.id);
    }
    return displays;
}

}  // namespace orvane
