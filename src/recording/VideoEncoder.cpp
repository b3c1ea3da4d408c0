#include "recording/VideoEncoder.h"

#include <libyuv/convert_from_argb.h>

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
    c->pix_fmt = AV_PIX_FMT_YUV420P;
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
    const int opened = avcodec_open2(c, codec, &options);
    av_dict_free(&options);
    if (opened < 0) return QStringLiteral("Cannot open the H.264 encoder: ") + avErrorText(opened);

    frame_.reset(av_frame_alloc());
    packet_.reset(av_packet_alloc());
    if (!frame_ || !packet_) return QStringLiteral("Out of memory");
    frame_->format = c->pix_fmt;
    frame_->width = c->width;
    frame_->height = c->height;
    if (const int allocated = av_frame_get_buffer(frame_.get(), 0); allocated < 0) return avErrorText(allocated);

    return {};
}

void VideoEncoder::setStream(MovieWriter* writer, int streamIndex) {
    writer_ = writer;
    streamIndex_ = streamIndex;
}

QString VideoEncoder::encode(const std::uint8_t* bgra, int bytesPerLine, std::int64_t frameIndex) {
    if (!encoder_) return QStringLiteral("Encoder not open");
    if (const int writable = av_frame_make_writable(frame_.get()); writable < 0) return avErrorText(writable);
    // The colour conversion is the largest cost after encoding: libyuv's
    // vector code does it in one pass over the picture.
    if (libyuv::ARGBToI420(bgra, bytesPerLine, frame_->data[0], frame_->linesize[0], frame_->data[1],
                           frame_->linesize[1], frame_->data[2], frame_->linesize[2], encoder_->width,
                           encoder_->height) != 0)
        return QStringLiteral("Colour conversion failed");
    frame_->pts = frameIndex;
    if (const int sent = avcodec_send_frame(encoder_.get(), frame_.get()); sent < 0) return avErrorText(sent);
    ++framesEncoded_;
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
