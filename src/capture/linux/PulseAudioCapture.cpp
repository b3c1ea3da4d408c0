#include "capture/linux/PulseAudioCapture.h"

#include <pulse/error.h>
#include <pulse/simple.h>

#include <vector>

#include "document/Log.h"

namespace orvane {

namespace {
constexpr std::size_t kChunkFrames = PulseAudioCapture::kSampleRate / 100;  // 10 ms
constexpr std::size_t kChunkBytes = kChunkFrames * PulseAudioCapture::kChannels * sizeof(float);
}  // namespace

PulseAudioCapture::PulseAudioCapture(QString sourceName, Sink sink, Lost lost)
    : sourceName_(std::move(sourceName)), sink_(std::move(sink)), lost_(std::move(lost)) {}

PulseAudioCapture::~PulseAudioCapture() { stop(); }

QString PulseAudioCapture::start() {
    stop();
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32LE;
    spec.rate = kSampleRate;
    spec.channels = kChannels;
    pa_buffer_attr attributes{};
    attributes.maxlength = static_cast<std::uint32_t>(-1);
    attributes.tlength = static_cast<std::uint32_t>(-1);
    attributes.prebuf = static_cast<std::uint32_t>(-1);
    attributes.minreq = static_cast<std::uint32_t>(-1);
    attributes.fragsize = static_cast<std::uint32_t>(kChunkBytes);
    int error = 0;
    const QByteArray source = sourceName_.toUtf8();
    stream_ = pa_simple_new(nullptr, "OrvaneUI", PA_STREAM_RECORD, source.isEmpty() ? nullptr : source.constData(),
                            "Capture", &spec, nullptr, &attributes, &error);
    if (!stream_) return QString::fromUtf8(pa_strerror(error));
    frames_ = 0;
    thread_ = std::jthread([this](std::stop_token stop) { run(stop); });
    return {};
}

void PulseAudioCapture::stop() {
    if (thread_.joinable()) {
        thread_.request_stop();
        thread_.join();  // a read returns within one 10 ms chunk
    }
    if (stream_) {
        pa_simple_free(stream_);
        stream_ = nullptr;
    }
}

void PulseAudioCapture::run(std::stop_token stop) {
    std::vector<float> chunk(kChunkFrames * kChannels);
    while (!stop.stop_requested()) {
        int error = 0;
        if (pa_simple_read(stream_, chunk.data(), kChunkBytes, &error) < 0) {
            // The stream is dead for good: a read would fail again at once.
            const QString reason = QString::fromUtf8(pa_strerror(error));
            const bool serverGone = error == PA_ERR_CONNECTIONTERMINATED || error == PA_ERR_CONNECTIONREFUSED;
            if (lost_)
                lost_(reason, serverGone);
            else
                logLine("⚠️ Recording from " + sourceName_.toStdString() + " stopped: " + reason.toStdString());
            return;
        }
        frames_ += kChunkFrames;
        if (sink_) sink_(chunk.data(), kChunkFrames);
    }
}

}  // namespace orvane
