#include "capture/linux/PulseAudioDevices.h"

#include <pulse/introspect.h>

#include "capture/linux/PulseConnection.h"
#include "document/Log.h"

namespace orvane {

CaptureResult<std::vector<MicrophoneDevice>> PulseAudioDevices::microphones() {
    using Result = CaptureResult<std::vector<MicrophoneDevice>>;
    PulseConnection connection;
    if (!connection.ok()) return Result::failure(connection.failure());
    std::vector<MicrophoneDevice> devices;
    auto collect = [](pa_context*, const pa_source_info* info, int eol, void* data) {
        if (eol || !info) return;
        if (info->monitor_of_sink != PA_INVALID_INDEX) return;  // system sound, not a microphone
        auto* list = static_cast<std::vector<MicrophoneDevice>*>(data);
        const QString name = QString::fromUtf8(info->name);
        const QString description = info->description ? QString::fromUtf8(info->description) : name;
        list->push_back({name, description.isEmpty() ? name : description});
    };
    if (!connection.finish(pa_context_get_source_info_list(connection.context(), collect, &devices)))
        return Result::failure(QStringLiteral("The sound server did not list its sources"));
    logLine("🎤 Found " + std::to_string(devices.size()) + " microphones");
    return devices;
}

CaptureResult<QString> PulseAudioDevices::systemSoundSource() {
    using Result = CaptureResult<QString>;
    PulseConnection connection;
    if (!connection.ok()) return Result::failure(connection.failure());
    QString defaultSink;
    auto server = [](pa_context*, const pa_server_info* info, void* data) {
        if (info && info->default_sink_name) *static_cast<QString*>(data) = QString::fromUtf8(info->default_sink_name);
    };
    if (!connection.finish(pa_context_get_server_info(connection.context(), server, &defaultSink)) ||
        defaultSink.isEmpty())
        return Result::failure(QStringLiteral("The sound server has no default output"));

    QString monitor;
    auto sink = [](pa_context*, const pa_sink_info* info, int eol, void* data) {
        if (!eol && info && info->monitor_source_name)
            *static_cast<QString*>(data) = QString::fromUtf8(info->monitor_source_name);
    };
    const QByteArray sinkName = defaultSink.toUtf8();
    if (!connection.finish(pa_context_get_sink_info_by_name(connection.context(), sinkName.constData(), sink, &monitor)) ||
        monitor.isEmpty())
        return Result::failure(QStringLiteral("The default output has no monitor"));
    return monitor;
}

}  // namespace orvane
