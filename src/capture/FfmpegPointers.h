#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace orvane {

// Owners for the FFmpeg objects of a decode path.
struct AvFormatInputClose {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct AvCodecContextFree {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct AvFrameFree {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct AvPacketFree {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct SwsContextFree {
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
struct AvDictionaryFree {
    void operator()(AVDictionary* dictionary) const { av_dict_free(&dictionary); }
};

using AvFormatInput = std::unique_ptr<AVFormatContext, AvFormatInputClose>;
using AvCodecContextPtr = std::unique_ptr<AVCodecContext, AvCodecContextFree>;
using AvFramePtr = std::unique_ptr<AVFrame, AvFrameFree>;
using AvPacketPtr = std::unique_ptr<AVPacket, AvPacketFree>;
using SwsContextPtr = std::unique_ptr<SwsContext, SwsContextFree>;

}  // namespace orvane
