#include "capture/FfmpegVideoReader.h"

extern "C" {
#include <libavdevice/avdevice.h>
#include <libavutil/error.h>
}

#include <QImage>

#include <mutex>

namespace orvane {

namespace {

QString avError(int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return QString::fromUtf8(text);
}

using Result = CaptureResult<std::unique_ptr<FfmpegVideoReader>>;

QString streamEnded() { return QStringLiteral("The camera stream ended"); }

}  // namespace

int FfmpegVideoReader::interruptCallback(void* self) {
    return static_cast<FfmpegVideoReader*>(self)->interrupted_ ? 1 : 0;
}

CaptureResult<std::unique_ptr<FfmpegVideoReader>> FfmpegVideoReader::open(
    const char* inputFormat, const QString& url, const std::map<std::string, std::string>& options) {
    static std::once_flag registered;
    std::call_once(registered, [] { avdevice_register_all(); });

    const AVInputFormat* format = av_find_input_format(inputFormat);
    if (!format) return Result::failure(QStringLiteral("FFmpeg has no %1 input").arg(QLatin1String(inputFormat)));

    std::unique_ptr<FfmpegVideoReader> reader(new FfmpegVideoReader());
    AVFormatContext* context = avformat_alloc_context();
    if (!context) return Result::failure(QStringLiteral("Out of memory"));
    context->interrupt_callback.callback = &FfmpegVideoReader::interruptCallback;
    context->interrupt_callback.opaque = reader.get();

    AVDictionary* raw = nullptr;
    for (const auto& [key, value] : options) av_dict_set(&raw, key.c_str(), value.c_str(), 0);
    std::unique_ptr<AVDictionary, AvDictionaryFree> dictionary(raw);
    AVDictionary* passed = dictionary.release();
    // On failure avformat_open_input frees the context itself.
    const int opened = avformat_open_input(&context, url.toUtf8().constData(), format, &passed);
    dictionary.reset(passed);
    if (opened < 0) return Result::failure(avError(opened));
    reader->input_.reset(context);

    if (const int found = avformat_find_stream_info(context, nullptr); found < 0)
        return Result::failure(avError(found));
    const AVCodec* codec = nullptr;
    reader->streamIndex_ = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (reader->streamIndex_ < 0 || !codec) return Result::failure(QStringLiteral("No video stream"));

    reader->decoder_.reset(avcodec_alloc_context3(codec));
    if (!reader->decoder_) return Result::failure(QStringLiteral("Out of memory"));
    const AVCodecParameters* parameters = context->streams[reader->streamIndex_]->codecpar;
    if (const int copied = avcodec_parameters_to_context(reader->decoder_.get(), parameters); copied < 0)
        return Result::failure(avError(copied));
    if (const int ready = avcodec_open2(reader->decoder_.get(), codec, nullptr); ready < 0)
        return Result::failure(avError(ready));
    reader->frame_.reset(av_frame_alloc());
    reader->packet_.reset(av_packet_alloc());
    if (!reader->frame_ || !reader->packet_) return Result::failure(QStringLiteral("Out of memory"));
    return reader;
}

FfmpegVideoReader::~FfmpegVideoReader() = default;

CaptureResult<GrabbedFrame> FfmpegVideoReader::grabFrame() {
    using GrabResult = CaptureResult<GrabbedFrame>;
    while (!interrupted_) {
        // A frame the decoder already holds comes first.
        const int received = avcodec_receive_frame(decoder_.get(), frame_.get());
        if (received == 0) {
            QImage image = convert(frame_.get());
            av_frame_unref(frame_.get());
            if (image.isNull()) return GrabResult::failure(QStringLiteral("Cannot convert the camera picture"));
            return GrabbedFrame{std::move(image), false};
        }
        if (received == AVERROR_EOF) return GrabResult::failure(streamEnded());
        if (received != AVERROR(EAGAIN)) return GrabResult::failure(avError(received));

        const int read = av_read_frame(input_.get(), packet_.get());
        if (read == AVERROR_EOF) {
            // The input has nothing more (a finite graph, a device that went
            // away): the decoder hands out what it still holds, then the
            // stream has ended, on this and every later grab.
            if (!draining_) {
                draining_ = true;
                avcodec_send_packet(decoder_.get(), nullptr);
                continue;
            }
            return GrabResult::failure(streamEnded());
        }
        if (read < 0) return GrabResult::failure(avError(read));
        if (packet_->stream_index == streamIndex_) {
            const int sent = avcodec_send_packet(decoder_.get(), packet_.get());
            av_packet_unref(packet_.get());
            if (sent < 0 && sent != AVERROR(EAGAIN)) return GrabResult::failure(avError(sent));
        } else {
            av_packet_unref(packet_.get());
        }
    }
    return GrabResult::failure(QStringLiteral("Stopped"));
}

QImage FfmpegVideoReader::convert(const AVFrame* frame) {
    if (frame->width <= 0 || frame->height <= 0) return {};
    scaler_.reset(sws_getCachedContext(scaler_.release(), frame->width, frame->height,
                                       static_cast<AVPixelFormat>(frame->format), frame->width, frame->height,
                                       AV_PIX_FMT_BGRA, SWS_BILINEAR, nullptr, nullptr, nullptr));
    if (!scaler_) return {};
    // BGRA in memory is QImage's 0xAARRGGBB on a little-endian machine.
    QImage image(frame->width, frame->height, QImage::Format_RGB32);
    uint8_t* planes[4] = {image.bits(), nullptr, nullptr, nullptr};
    const int strides[4] = {static_cast<int>(image.bytesPerLine()), 0, 0, 0};
    sws_scale(scaler_.get(), frame->data, frame->linesize, 0, frame->height, planes, strides);
    return image;
}

}  // namespace orvane
