#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

#include "recording/FfmpegOwners.h"

namespace orvane {

class MovieWriter;

// One AAC track at 44.1 kHz: takes the capture's interleaved float samples,
// resamples and remixes them to the track's channels, and writes whole AAC
// frames. Time stamps count samples of the track from the recording's
// origin. Used by one thread at a time.
class AudioEncoder {
public:
    static constexpr int kSampleRate = 44100;

    struct Settings {
        int inputSampleRate = 48000;
        int inputChannels = 2;
        int channels = 2;
        std::int64_t bitRate_bps = 128000;
    };

    AudioEncoder() = default;
    AudioEncoder(const AudioEncoder&) = delete;
    AudioEncoder& operator=(const AudioEncoder&) = delete;

    QString open(const Settings& settings, bool globalHeader);
    const AVCodecContext& context() const { return *encoder_; }
    void setStream(MovieWriter* writer, int streamIndex);

    // The track's first sample lies this many track samples after the origin.
    void startAt(std::int64_t trackSample);
    // Appends captured sound. Empty on success.
    QString write(const float* interleaved, std::size_t frames);
    // Appends silence, in track samples (a gap in what the device delivered).
    QString writeSilence(std::int64_t trackSamples);
    // Encodes what is left, padded to a whole frame, and drains the encoder.
    QString flush();

    std::int64_t samplesWritten() const { return nextPts_; }

private:
    QString encodeWholeFrames(bool padLast);

    AvEncoder encoder_;
    SwrOwner resampler_;
    AudioFifoOwner fifo_;
    AvFrameOwner frame_;
    AvPacketOwner packet_;
    MovieWriter* writer_ = nullptr;
    int streamIndex_ = -1;
    int inputChannels_ = 2;
    std::int64_t nextPts_ = 0;  // track samples: the pts of the next frame
};

}  // namespace orvane
