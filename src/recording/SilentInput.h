#pragma once

#include <cstddef>
#include <functional>
#include <thread>

namespace orvane {

// Stands in for a sound device that is not there: hands silence to its sink
// in 10 ms chunks, each when a device would have delivered it (48 kHz
// stereo float, as PulseAudioCapture), on a thread of its own. A track fed
// this way is placed on the recording's clock like any other and lasts as
// long as the picture.
class SilentInput {
public:
    static constexpr int kSampleRate = 48000;
    static constexpr int kChannels = 2;

    using Sink = std::function<void(const float* samples, std::size_t frames)>;

    explicit SilentInput(Sink sink);
    ~SilentInput();
    SilentInput(const SilentInput&) = delete;
    SilentInput& operator=(const SilentInput&) = delete;

    void start();
    void stop();

private:
    void run(std::stop_token stop);

    Sink sink_;
    std::jthread thread_;
};

}  // namespace orvane
