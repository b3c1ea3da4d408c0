#include "recording/MovieWriter.h"

extern "C" {
#include <libavutil/opt.h>
}

#include "document/Log.h"

namespace orvane {

QString MovieWriter::create(const QString& path, OutputFormat format) {
    std::lock_guard lock(mutex_);
    AVFormatContext* raw = nullptr;
    const QByteArray file = path.toUtf8();
    const int made = avformat_alloc_output_context2(&raw, nullptr, muxerName(format), file.constData());
    if (made < 0 || !raw) return avErrorText(made);
    output_.reset(raw);
    return {};
}

int MovieWriter::addStream(const AVCodecContext& encoder) {
    std::lock_guard lock(mutex_);
    if (!output_ || headerWritten_) return -1;
    AVStream* stream = avformat_new_stream(output_.get(), nullptr);
    if (!stream) return -1;
    if (avcodec_parameters_from_context(stream->codecpar, &encoder) < 0) return -1;
    stream->time_base = encoder.time_base;
    return stream->index;
}

QString MovieWriter::open() {
    std::lock_guard lock(mutex_);
    if (!output_) return QStringLiteral("No output");
    AVFormatContext* context = output_.get();
    if (!(context->oformat->flags & AVFMT_NOFILE)) {
        if (const int opened = avio_open(&context->pb, context->url, AVIO_FLAG_WRITE); opened < 0)
            return avErrorText(opened);
    }
    AVDictionary* options = nullptr;
    // A fragment per key frame (one a second), the first index up front and
    // fragments that stand on their own: what a killed process leaves plays.
    av_dict_set(&options, "movflags", "frag_keyframe+empty_moov+default_base_moof", 0);
    // Every fragment reaches the disk as soon as it is complete.
    av_dict_set(&options, "flush_packets", "1", 0);
    // A track that receives nothing (a silent device) must not hold back the
    // others for long.
    av_dict_set(&options, "max_interleave_delta", "1000000", 0);
    const int written = avformat_write_header(context, &options);
    av_dict_free(&options);
    if (written < 0) return avErrorText(written);
    headerWritten_ = true;
    return {};
}

void MovieWriter::writePacket(int streamIndex, AVRational encoderTimeBase, AVPacket* packet) {
    QString failure;
    {
        std::lock_guard lock(mutex_);
        if (!headerWritten_ || finished_ || failed_.load() || streamIndex < 0 ||
            streamIndex >= static_cast<int>(output_->nb_streams)) {
            av_packet_unref(packet);
            return;
        }
        packet->stream_index = streamIndex;
        av_packet_rescale_ts(packet, encoderTimeBase, output_->streams[streamIndex]->time_base);
        const int written = av_interleaved_write_frame(output_.get(), packet);
        av_packet_unref(packet);
        if (written < 0) failure = avErrorText(written);
        else if (output_->pb && output_->pb->error < 0) failure = avErrorText(output_->pb->error);
        if (failure.isEmpty()) return;
        failure_ = failure;
        failed_ = true;
    }
    logLine("❌ Recording file write failed: " + failure.toStdString());
    if (onFailure_) onFailure_(failure);
}

QString MovieWriter::finish() {
    std::lock_guard lock(mutex_);
    if (!output_ || finished_) return failure_;
    finished_ = true;
    QString result = failure_;
    if (headerWritten_) {
        const int trailer = av_write_trailer(output_.get());
        if (trailer < 0 && result.isEmpty()) result = avErrorText(trailer);
    }
    AVFormatContext* context = output_.get();
    if (context->pb && !(context->oformat->flags & AVFMT_NOFILE)) {
        avio_flush(context->pb);
        if (context->pb->error < 0 && result.isEmpty()) result = avErrorText(context->pb->error);
        const int closed = avio_closep(&context->pb);
        if (closed < 0 && result.isEmpty()) result = avErrorText(closed);
    }
    if (!result.isEmpty()) {
        failure_ = result;
        failed_ = true;
    }
    return result;
}

QString MovieWriter::failure() const {
    std::lock_guard lock(mutex_);
    return failure_;
}

}  // namespace orvane
