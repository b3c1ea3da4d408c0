#include "recording/AudioTrackRecorder.h"

#include <algorithm>
#include <cmath>

#include "capture/linux/PulseAudioCapture.h"
#include "document/Log.h"
#include "recording/RecordingClock.h"

namespace orvane {

namespace {
constexpr double kReplaceThreshold_s = 0.2;
}

AudioTrackRecorder::AudioTrackRecorder(QString label, QString source, AudioEncoder::Settings settings)
    : label_(std::move(label)), source_(std::move(source)), settings_(settings) {}

AudioTrackRecorder::~AudioTrackRecorder() {
    if (capture_) capture_->stop();
}

QString AudioTrackRecorder::openEncoder(bool globalHeader) {
    AudioEncoder::Settings settings = settings_;
    settings.inputSampleRate = PulseAudioCapture::kSampleRate;
    settings.inputChannels = PulseAudioCapture::kChannels;
    return encoder_.open(settings, globalHeader);
}

QString AudioTrackRecorder::start(const RecordingClock& clock, FailureHandler onFailure) {
    clock_ = &clock;
    onFailure_ = std::move(onFailure);
    capture_ = std::make_unique<PulseAudioCapture>(source_, [this](const float* samples, std::size_t frames) {
        take(samples, frames);
    });
    return capture_->start();
}

QString AudioTrackRecorder::finish() {
    if (capture_) capture_->stop();
    return encoder_.flush();
}

void AudioTrackRecorder::take(const float* samples, std::size_t frames) {
    if (failed_ || !clock_->hasOrigin() || frames == 0) return;
    const double inputRate = PulseAudioCapture::kSampleRate;
    const double chunk_s = static_cast<double>(frames) / inputRate;
    // The chunk ended about when it arrived.
    const double chunkStart_s = clock_->secondsAt(RecordingClock::Clock::now()) - chunk_s;
    QString failure;
    if (!placed_) {
        if (chunkStart_s + chunk_s <= 0) return;  // pre-roll
        std::size_t skip = 0;
        if (chunkStart_s < 0) skip = std::min(frames, static_cast<std::size_t>(std::lround(-chunkStart_s * inputRate)));
        placed_ = true;
        placedAt_s_ = std::max(0.0, chunkStart_s);
        inputFramesPlaced_ = 0;
        encoder_.startAt(0);
        failure = encoder_.writeSilence(std::llround(placedAt_s_ * AudioEncoder::kSampleRate));
        if (failure.isEmpty()) {
            failure = encoder_.write(samples + skip * PulseAudioCapture::kChannels, frames - skip);
            inputFramesPlaced_ += static_cast<std::int64_t>(frames - skip);
        }
    } else {
        const double counted_s = placedAt_s_ + static_cast<double>(inputFramesPlaced_) / inputRate;
        const double drift_s = chunkStart_s - counted_s;  // > 0: the device fell behind
        if (drift_s > kReplaceThreshold_s) {
            failure = encoder_.writeSilence(std::llround(drift_s * AudioEncoder::kSampleRate));
            inputFramesPlaced_ += std::llround(drift_s * inputRate);
        } else if (drift_s < -kReplaceThreshold_s) {
            return;  // more sound than time has passed: this chunk goes
        }
        if (failure.isEmpty()) {
            failure = encoder_.write(samples, frames);
            inputFramesPlaced_ += static_cast<std::int64_t>(frames);
        }
    }
    if (!failure.isEmpty()) {
        failed_ = true;
        logLine("❌ " + label_.toStdString() + " track failed: " + failure.toStdString());
        if (onFailure_) onFailure_(failure);
    }
}

}  // namespace orvane
