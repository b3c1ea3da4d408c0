#include "recording/AudioTrackRecorder.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "capture/linux/PulseAudioCapture.h"
#include "document/Log.h"
#include "recording/RecordingClock.h"
#include "recording/SilentInput.h"

namespace orvane {

namespace {
// Corrections smaller than this are left alone: arrival times jitter.
constexpr double kTolerance_s = 0.02;

double steadySeconds(RecordingClock::Clock::time_point t) {
    return std::chrono::duration<double>(t.time_since_epoch()).count();
}
}  // namespace

AudioTrackRecorder::AudioTrackRecorder(QString label, QString source, AudioEncoder::Settings settings)
    : label_(std::move(label)), source_(std::move(source)), settings_(settings) {}

AudioTrackRecorder::~AudioTrackRecorder() {
    if (capture_) capture_->stop();
    if (silence_) silence_->stop();
}

QString AudioTrackRecorder::openEncoder(bool globalHeader) {
    AudioEncoder::Settings settings = settings_;
    settings.inputSampleRate = PulseAudioCapture::kSampleRate;
    settings.inputChannels = PulseAudioCapture::kChannels;
    return encoder_.open(settings, globalHeader);
}

QString AudioTrackRecorder::start(const RecordingClock& clock, FailureHandler onFailure, InputLostHandler onInputLost) {
    clock_ = &clock;
    onFailure_ = std::move(onFailure);
    onInputLost_ = std::move(onInputLost);
    static_assert(SilentInput::kSampleRate == PulseAudioCapture::kSampleRate &&
                  SilentInput::kChannels == PulseAudioCapture::kChannels);
    if (source_.isEmpty()) {
        startSilence();
        return {};
    }
    capture_ = std::make_unique<PulseAudioCapture>(
        source_, [this](const float* samples, std::size_t frames) { take(samples, frames); },
        [this](const QString& reason, bool serverGone) { deviceLost(reason, serverGone); });
    QString failure = capture_->start();
    if (!failure.isEmpty()) capture_.reset();
    return failure;
}

void AudioTrackRecorder::startSilent(const RecordingClock& clock, FailureHandler onFailure) {
    clock_ = &clock;
    onFailure_ = std::move(onFailure);
    capture_.reset();
    startSilence();
}

void AudioTrackRecorder::startSilence() {
    silence_ = std::make_unique<SilentInput>([this](const float* samples, std::size_t frames) {
        take(samples, frames);
    });
    silence_->start();
}

void AudioTrackRecorder::deviceLost(const QString& reason, bool serverGone) {
    // On the device's thread, after its last chunk: nothing else runs take()
    // until the silence starts. The silence is dated by its own arrival, not
    // by the device's sample count; the gap between them becomes silence too.
    inputFrames_ = 0;
    hasDeviceStart_ = false;
    startSilence();
    if (onInputLost_) onInputLost_(label_, reason, serverGone);
}

QString AudioTrackRecorder::finish() {
    if (capture_) capture_->stop();
    if (silence_) silence_->stop();
    // The device's thread is gone: its state is ours now.
    if (!failed_ && clock_ && clock_->hasOrigin() && clock_->hasEnd()) {
        const double missing_s = clock_->secondsAt(clock_->end()) - writeCursor_s_;
        if (QString failure = encoder_.writeSilence(std::llround(missing_s * AudioEncoder::kSampleRate));
            !failure.isEmpty())
            return failure;
        writeCursor_s_ = std::max(writeCursor_s_, clock_->secondsAt(clock_->end()));
    }
    return encoder_.flush();
}

void AudioTrackRecorder::take(const float* samples, std::size_t frames) {
    if (failed_ || frames == 0) return;
    heardInput_ = true;
    const double inputRate = PulseAudioCapture::kSampleRate;
    const double arrival_s = steadySeconds(RecordingClock::Clock::now());
    inputFrames_ += static_cast<std::int64_t>(frames);
    const double bound_s = arrival_s - static_cast<double>(inputFrames_) / inputRate;
    if (!hasDeviceStart_ || bound_s < deviceStart_s_) {
        hasDeviceStart_ = true;
        deviceStart_s_ = bound_s;
    }
    if (!clock_->hasOrigin()) return;  // pre-roll

    // Where this chunk's first sample belongs, from the origin.
    const double chunkStart_s = deviceStart_s_ +
                                static_cast<double>(inputFrames_ - static_cast<std::int64_t>(frames)) / inputRate -
                                steadySeconds(clock_->origin());
    if (clock_->hasEnd() && chunkStart_s >= clock_->secondsAt(clock_->end())) return;
    const double gap_s = chunkStart_s - writeCursor_s_;
    std::size_t skip = 0;
    QString failure;
    if (gap_s > kTolerance_s) {
        if (writeCursor_s_ > 0) logLine("🎚️ " + label_.toStdString() + " track: " + std::to_string(gap_s) + " s of silence");
        failure = encoder_.writeSilence(std::llround(gap_s * AudioEncoder::kSampleRate));
        writeCursor_s_ += gap_s;
    } else if (gap_s < -kTolerance_s) {
        skip = std::min(frames, static_cast<std::size_t>(std::llround(-gap_s * inputRate)));
    }
    std::size_t take = frames - skip;
    if (clock_->hasEnd()) {
        const double end_s = clock_->secondsAt(clock_->end());
        const double room_s = end_s - std::max(writeCursor_s_, chunkStart_s + static_cast<double>(skip) / inputRate);
        take = std::min(take, static_cast<std::size_t>(std::max<long long>(0, std::llround(room_s * inputRate))));
    }
    if (failure.isEmpty() && take > 0) {
        failure = encoder_.write(samples + skip * PulseAudioCapture::kChannels, take);
        writeCursor_s_ += static_cast<double>(take) / inputRate;
    }
    if (!failure.isEmpty()) {
        failed_ = true;
        logLine("❌ " + label_.toStdString() + " track failed: " + failure.toStdString());
        if (onFailure_) onFailure_(failure);
    }
}

}  // namespace orvane
