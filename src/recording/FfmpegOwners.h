#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
}

#include <QString>

#include <memory>

namespace orvane {

// Owners for the FFmpeg objects of the writing path.
struct AvOutputClose {
    void operator()(AVFormatContext* context) const {
        if (context->pb && !(context->oformat->flags & AVFMT_NOFILE)) avio_closep(&context->pb);
        avformat_free_context(context);
    }
};
struct AvEncoderFree {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct AvFrameRelease {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct AvPacketRelease {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct SwrRelease {
    void operator()(SwrContext* context) const { swr_free(&context); }
};
struct AudioFifoRelease {
    void operator()(AVAudioFifo* fifo) const { av_audio_fifo_free(fifo); }
};

using AvOutput = std::unique_ptr<AVFormatContext, AvOutputClose>;
using AvEncoder = std::unique_ptr<AVCodecContext, AvEncoderFree>;
using AvFrameOwner = std::unique_ptr<AVFrame, AvFrameRelease>;
using AvPacketOwner = std::unique_ptr<AVPacket, AvPacketRelease>;
using SwrOwner = std::unique_ptr<SwrContext, SwrRelease>;
using AudioFifoOwner = std::unique_ptr<AVAudioFifo, AudioFifoRelease>;

// FFmpeg's words for an error code.
inline QString avErrorText(int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return QString::fromUtf8(text);
}

}  // namespace orvane
