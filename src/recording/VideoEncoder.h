#pragma once

#include <QString>

#include <atomic>
#include <cstdint>

#include "recording/FfmpegOwners.h"

namespace orvane {

class MovieWriter;

// H.264 by libx264 for one recording: baseline profile, a key frame every 30
// frames, 30 frames a second, an average bit rate. Pictures come in as 4:2:0
// (BT.601, studio range), converted from packed BGRA with convert(). Used by
// one thread at a time.
class VideoEncoder {
public:
    static constexpr int kFramesPerSecond = 30;
    static constexpr int kKeyFrameInterval = 30;
    // How much lower than the process the encoder's own threads run.
    static constexpr int kEncoderNiceness = 5;

    struct Settings {
        int width = 0;
        int height = 0;
        std::int64_t bitRate_bps = 0;
    };

    // The x264 preset for a frame size: the fastest presets above 1080p, so
    // that two cores keep up with real time (the whole recording, composing
    // included, takes about one core of two at 1440p). No tune; x264 picks its
    // own thread count (three frame threads on two cores). The benchmark's
    // command-line anchor is held to exactly these settings.
    static const char* presetFor(int width, int height);

    VideoEncoder() = default;
    ~VideoEncoder() = default;
    VideoEncoder(const VideoEncoder&) = delete;
    VideoEncoder& operator=(const VideoEncoder&) = delete;

    // Empty on success.
    QString open(const Settings& settings, bool globalHeader);
    const AVCodecContext& context() const { return *encoder_; }
    void setStream(MovieWriter* writer, int streamIndex);

    // The pixel format encode() takes.
    static constexpr AVPixelFormat kPixelFormat = AV_PIX_FMT_YUV420P;
    // Converts a picture of bytes B, G, R, A (QImage's RGB32 and ARGB32 on
    // little-endian machines) of the target's size into the target's planes,
    // which must be writable. False when the sizes do not fit.
    static bool convert(const std::uint8_t* bgra, int bytesPerLine, AVFrame& target);

    // A picture of the opened size in kPixelFormat, at frame number
    // `frameIndex` on the recording's clock. The encoder has read the picture
    // when this returns. Empty on success.
    QString encode(AVFrame& picture, std::int64_t frameIndex);
    // Drains the encoder at the end.
    QString flush();

    std::int64_t framesEncoded() const { return framesEncoded_.load(); }

private:
    QString drain();

    AvEncoder encoder_;
    AvPacketOwner packet_;
    MovieWriter* writer_ = nullptr;
    int streamIndex_ = -1;
    std::atomic<std::int64_t> framesEncoded_{0};  // read from other threads
};

}  // namespace orvane
