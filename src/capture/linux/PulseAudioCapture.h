#pragma once

#include <QString>

#include <atomic>
#include <cstddef>
#include <functional>
#include <thread>

struct pa_simple;

namespace orvane {

// Records one sound-server source (a microphone, or the system sound
// monitor) as 48 kHz stereo float samples on a thread of its own. Reads
// 10 ms at a time with a matching fragment size: a null sink's monitor
// otherwise hands over its sound in 2-second lumps.
//
// When the source goes away while recording (the server quits or dies, the
// device is unplugged), the thread ends and says so once through `lost`.
class PulseAudioCapture {
public:
    static constexpr int kSampleRate = 48000;
    static constexpr int kChannels = 2;

    // Called on the capture thread with interleaved samples.
    using Sink = std::function<void(const float* samples, std::size_t frames)>;
    // Called once on the capture thread, after its last samples, when the
    // source stops delivering; serverGone tells a lost connection to the
    // server from a source that went away on a server still there.
    using Lost = std::function<void(const QString& reason, bool serverGone)>;

    PulseAudioCapture(QString sourceName, Sink sink, Lost lost = {});
    ~PulseAudioCapture();
    PulseAudioCapture(const PulseAudioCapture&) = delete;
    PulseAudioCapture& operator=(const PulseAudioCapture&) = delete;

    // Empty on success, else why the stream did not open (not logged: the
    // caller decides what a failure means).
    QString start();
    void stop();
    bool isRunning() const { return thread_.joinable(); }
    std::size_t framesCaptured() const { return frames_; }

private:
    void run(std::stop_token stop);

    const QString sourceName_;
    Sink sink_;
    Lost lost_;
    pa_simple* stream_ = nullptr;  // opened by start(), then used by the capture thread alone
    std::atomic<std::size_t> frames_{0};
    std::jthread thread_;
};

}  // namespace orvane
