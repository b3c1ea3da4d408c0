#include "recording/VideoEncoder.h"

#include <libyuv/convert_from_argb.h>
#include <sys/resource.h>
#include <unistd.h>

#include <thread>

#include "recording/MovieWriter.h"

namespace orvane {

const char* VideoEncoder::presetFor(int width, int height) {
    return static_cast<std::int64_t>(width) * height > 1920 * 1080 ? "ultrafast" : "superfast";
}

QString VideoEncoder::open(const Settings& settings, bool globalHeader) {
    const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
    if (!codec) return QStringLiteral("FFmpeg has no libx264 encoder");
    encoder_.reset(avcodec_alloc_context3(codec));
    if (!encoder_) return QStringLiteral("Out of memory");
    AVCodecContext* c = encoder_.get();
    c->width = settings.width;
    c->height = settings.height;
    c->pix_fmt = kPixelFormat;
    c->time_base = AVRational{1, kFramesPerSecond};
    c->framerate = AVRational{kFramesPerSecond, 1};
    c->bit_rate = settings.bitRate_bps;
    c->gop_size = kKeyFrameInterval;
    c->keyint_min = kKeyFrameInterval;
    c->max_b_frames = 0;
    c->profile = FF_PROFILE_H264_BASELINE;
    // libyuv converts with the BT.601 matrix into studio range.
    c->color_range = AVCOL_RANGE_MPEG;
    c->colorspace = AVCOL_SPC_SMPTE170M;
    c->color_primaries = AVCOL_PRI_BT709;
    c->color_trc = AVCOL_TRC_BT709;
    if (globalHeader) c->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "preset", presetFor(settings.width, settings.height), 0);
    av_dict_set(&options, "profile", "baseline", 0);
    // Key frames exactly every 30 frames, so that fragments last one second.
    av_dict_set(&options, "x264-params", "scenecut=0", 0);
    // x264 starts its threads here, and they take the opening thread's
    // priority: opened from a thread a few steps below the recorder's render
    // thread, they give way to it when the two cores are short. The render
    // thread has a deadline every frame; the encoder has the ring's slack.
    int opened = 0;
    std::thread([&] {
        setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), getpriority(PRIO_PROCESS, 0) + kEncoderNiceness);
        opened = avcodec_open2(c, codec, &options);
    }).join();
    av_dict_free(&options);
    if (opened < 0) return QStringLiteral("Cannot open the H.264 encoder: ") + avErrorText(opened);

    packet_.reset(av_packet_alloc());
    if (!packet_) return QStringLiteral("Out of memory");
    return {};
}

void VideoEncoder::setStream(MovieWriter* writer, int streamIndex) {
    writer_ = writer;
    streamIndex_ = streamIndex;
}

bool VideoEncoder::convert(const std::uint8_t* bgra, int bytesPerLine, AVFrame& target) {
    if (target.format != kPixelFormat || !target.data[0]) return false;
    // libyuv's vector code converts in one pass over the picture, straight
    // into the encoder's planes.
    return libyuv::ARGBToI420(bgra, bytesPerLine, target.data[0], target.linesize[0], target.data[1],
                              target.linesize[1], target.data[2], target.linesize[2], target.width,
                              target.height) == 0;
}

QString VideoEncoder::encode(AVFrame& picture, std::int64_t frameIndex) {
    if (!encoder_) return QStringLiteral("Encoder not open");
    if (picture.width != encoder_->width || picture.height != encoder_->height || picture.format != kPixelFormat)
        return QStringLiteral("Picture does not fit the encoder");
    picture.pts = frameIndex;
    if (const int sent = avcodec_send_frame(encoder_.get(), &picture); sent < 0) return avErrorText(sent);
    ++framesEncoded_;
    // Draining after every picture has the encoder read it now, so that the
    // caller may reuse it at once.
    return drain();
}

QString VideoEncoder::flush() {
    if (!encoder_) return {};
    if (const int sent = avcodec_send_frame(encoder_.get(), nullptr); sent < 0 && sent != AVERROR_EOF)
        return avErrorText(sent);
    return drain();
}

QString VideoEncoder::drain() {
    for (;;) {
        const int received = avcodec_receive_packet(encoder_.get(), packet_.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return {};
        if (received < 0) return avErrorText(received);
        if (writer_) writer_->writePacket(streamIndex_, encoder_->time_base, packet_.get());
        else av_packet_unref(packet_.get());
    }
}

}  // namespace orvane
