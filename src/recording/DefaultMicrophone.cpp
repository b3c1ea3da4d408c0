#include "recording/DefaultMicrophone.h"

#include <pulse/introspect.h>

#include "capture/linux/PulseConnection.h"

namespace orvane {

DefaultMicrophone::Lookup DefaultMicrophone::find() {
    PulseConnection connection;
    if (!connection.ok()) return {{}, connection.failure()};
    QString defaultSource;
    auto server = [](pa_context*, const pa_server_info* info, void* data) {
        if (info && info->default_source_name)
            *static_cast<QString*>(data) = QString::fromUtf8(info->default_source_name);
    };
    if (!connection.finish(pa_context_get_server_info(connection.context(), server, &defaultSource)))
        return {{}, QStringLiteral("the sound server did not answer")};
    if (defaultSource.isEmpty()) return {{}, QStringLiteral("the sound server has no default input")};

    struct Source {
        bool found = false;
        bool monitor = false;
    } source;
    auto describe = [](pa_context*, const pa_source_info* info, int eol, void* data) {
        if (eol || !info) return;
        auto* s = static_cast<Source*>(data);
        s->found = true;
        s->monitor = info->monitor_of_sink != PA_INVALID_INDEX;
    };
    const QByteArray name = defaultSource.toUtf8();
    if (!connection.finish(pa_context_get_source_info_by_name(connection.context(), name.constData(), describe, &source)) ||
        !source.found)
        return {{}, QStringLiteral("the default input “%1” is gone").arg(defaultSource)};
    if (source.monitor)
        return {{}, QStringLiteral("the default input “%1” is the monitor of an output").arg(defaultSource)};
    return {defaultSource, {}};
}

}  // namespace orvane
