#include "recording/AudioEncoder.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libavutil/samplefmt.h>
}

#include <algorithm>
#include <vector>

#include "recording/MovieWriter.h"

namespace orvane {

QString AudioEncoder::open(const Settings& settings, bool globalHeader) {
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
    if (!codec) return QStringLiteral("FFmpeg has no AAC encoder");
    encoder_.reset(avcodec_alloc_context3(codec));
    if (!encoder_) return QStringLiteral("Out of memory");
    AVCodecContext* c = encoder_.get();
    c->sample_fmt = AV_SAMPLE_FMT_FLTP;
    c->sample_rate = kSampleRate;
    av_channel_layout_default(&c->ch_layout, settings.channels);
    c->bit_rate = settings.bitRate_bps;
    c->time_base = AVRational{1, kSampleRate};
    if (globalHeader) c->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (const int opened = avcodec_open2(c, codec, nullptr); opened < 0)
        return QStringLiteral("Cannot open the AAC encoder: ") + avErrorText(opened);

    AVChannelLayout inputLayout;
    av_channel_layout_default(&inputLayout, settings.inputChannels);
    inputChannels_ = settings.inputChannels;
    SwrContext* resampler = nullptr;
    const int made = swr_alloc_set_opts2(&resampler, &c->ch_layout, c->sample_fmt, c->sample_rate, &inputLayout,
                                         AV_SAMPLE_FMT_FLT, settings.inputSampleRate, 0, nullptr);
    av_channel_layout_uninit(&inputLayout);
    if (made < 0 || !resampler) return QStringLiteral("Cannot set up the resampler: ") + avErrorText(made);
    resampler_.reset(resampler);
    if (const int ready = swr_init(resampler); ready < 0)
        return QStringLiteral("Cannot set up the resampler: ") + avErrorText(ready);

    fifo_.reset(av_audio_fifo_alloc(c->sample_fmt, c->ch_layout.nb_channels, c->frame_size * 4));
    frame_.reset(av_frame_alloc());
    packet_.reset(av_packet_alloc());
    if (!fifo_ || !frame_ || !packet_) return QStringLiteral("Out of memory");
    frame_->format = c->sample_fmt;
    frame_->sample_rate = c->sample_rate;
    frame_->nb_samples = c->frame_size;
    if (const int copied = av_channel_layout_copy(&frame_->ch_layout, &c->ch_layout); copied < 0)
        return avErrorText(copied);
    if (const int allocated = av_frame_get_buffer(frame_.get(), 0); allocated < 0) return avErrorText(allocated);
    return {};
}

void AudioEncoder::setStream(MovieWriter* writer, int streamIndex) {
    writer_ = writer;
    streamIndex_ = streamIndex;
}

void AudioEncoder::startAt(std::int64_t trackSample) { nextPts_ = std::max<std::int64_t>(0, trackSample); }

QString AudioEncoder::write(const float* interleaved, std::size_t frames) {
    if (!encoder_) return QStringLiteral("Encoder not open");
    const int capacity = swr_get_out_samples(resampler_.get(), static_cast<int>(frames));
    if (capacity <= 0) return {};
    std::vector<std::vector<float>> planes(static_cast<std::size_t>(encoder_->ch_layout.nb_channels),
                                           std::vector<float>(static_cast<std::size_t>(capacity)));
    std::vector<std::uint8_t*> out;
    for (auto& plane : planes) out.push_back(reinterpret_cast<std::uint8_t*>(plane.data()));
    const std::uint8_t* in[1] = {reinterpret_cast<const std::uint8_t*>(interleaved)};
    const int converted = swr_convert(resampler_.get(), out.data(), capacity, in, static_cast<int>(frames));
    if (converted < 0) return avErrorText(converted);
    if (converted > 0) {
        const int queued = av_audio_fifo_write(fifo_.get(), reinterpret_cast<void**>(out.data()), converted);
        if (queued < converted) return QStringLiteral("Out of memory");
    }
    return encodeWholeFrames(false);
}

QString AudioEncoder::writeSilence(std::int64_t trackSamples) {
    if (!encoder_ || trackSamples <= 0) return {};
    const int count = static_cast<int>(std::min<std::int64_t>(trackSamples, kSampleRate * 10));
    std::vector<std::vector<float>> planes(static_cast<std::size_t>(encoder_->ch_layout.nb_channels),
                                           std::vector<float>(static_cast<std::size_t>(count), 0.0f));
    std::vector<void*> out;
    for (auto& plane : planes) out.push_back(plane.data());
    if (av_audio_fifo_write(fifo_.get(), out.data(), count) < count) return QStringLiteral("Out of memory");
    return encodeWholeFrames(false);
}

QString AudioEncoder::flush() {
    if (!encoder_) return {};
    if (QString failure = encodeWholeFrames(true); !failure.isEmpty()) return failure;
    if (const int sent = avcodec_send_frame(encoder_.get(), nullptr); sent < 0 && sent != AVERROR_EOF)
        return avErrorText(sent);
    for (;;) {
        const int received = avcodec_receive_packet(encoder_.get(), packet_.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return {};
        if (received < 0) return avErrorText(received);
        if (writer_) writer_->writePacket(streamIndex_, encoder_->time_base, packet_.get());
        else av_packet_unref(packet_.get());
    }
}

QString AudioEncoder::encodeWholeFrames(bool padLast) {
    const int frameSize = encoder_->frame_size;
    for (;;) {
        const int available = av_audio_fifo_size(fifo_.get());
        if (available == 0 || (available < frameSize && !padLast)) return {};
        if (const int writable = av_frame_make_writable(frame_.get()); writable < 0) return avErrorText(writable);
        const int take = std::min(available, frameSize);
        if (av_audio_fifo_read(fifo_.get(), reinterpret_cast<void**>(frame_->data), take) < take)
            return QStringLiteral("Audio queue read failed");
        if (take < frameSize)
            av_samples_set_silence(frame_->data, take, frameSize - take, encoder_->ch_layout.nb_channels,
                                   encoder_->sample_fmt);
        frame_->nb_samples = frameSize;
        frame_->pts = nextPts_;
        nextPts_ += frameSize;
        if (const int sent = avcodec_send_frame(encoder_.get(), frame_.get()); sent < 0) return avErrorText(sent);
        for (;;) {
            const int received = avcodec_receive_packet(encoder_.get(), packet_.get());
            if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) break;
            if (received < 0) return avErrorText(received);
            if (writer_) writer_->writePacket(streamIndex_, encoder_->time_base, packet_.get());
            else av_packet_unref(packet_.get());
        }
    }
}

}  // namespace orvane
