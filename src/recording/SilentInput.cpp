#include "recording/SilentInput.h"

#include <chrono>
#include <vector>

namespace orvane {

namespace {
constexpr std::size_t kChunkFrames = SilentInput::kSampleRate / 100;  // 10 ms
}  // namespace

SilentInput::SilentInput(Sink sink) : sink_(std::move(sink)) {}

SilentInput::~SilentInput() { stop(); }

void SilentInput::start() {
    stop();
    thread_ = std::jthread([this](std::stop_token stop) { run(stop); });
}

void SilentInput::stop() {
    if (!thread_.joinable()) return;
    thread_.request_stop();
    thread_.join();  // wakes within one chunk
}

void SilentInput::run(std::stop_token stop) {
    const std::vector<float> chunk(kChunkFrames * kChannels, 0.0f);
    const auto period = std::chrono::microseconds(1'000'000 * kChunkFrames / kSampleRate);
    // A chunk is due once all of its samples would have been taken.
    auto due = std::chrono::steady_clock::now() + period;
    while (!stop.stop_requested()) {
        std::this_thread::sleep_until(due);
        if (stop.stop_requested()) return;
        if (sink_) sink_(chunk.data(), kChunkFrames);
        due += period;
    }
}

}  // namespace orvane
