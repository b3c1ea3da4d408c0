#pragma once

#include <QString>

#include <atomic>
#include <map>
#include <memory>

#include "capture/FfmpegPointers.h"
#include "capture/CaptureStream.h"

namespace orvane {

// A live video input opened through libavdevice, decoded with libavcodec
// and converted with libswscale, on the thread that grabs from it.
class FfmpegVideoReader : public CaptureStream {
public:
    // inputFormat: an FFmpeg input device ("video4linux2", "lavfi").
    static CaptureResult<std::unique_ptr<FfmpegVideoReader>> open(const char* inputFormat, const QString& url,
                                                                  const std::map<std::string, std::string>& options);
    ~FfmpegVideoReader() override;

    CaptureResult<GrabbedFrame> grabFrame() override;
    bool pacesItself() const override { return true; }
    void interrupt() override { interrupted_ = true; }

private:
    FfmpegVideoReader() = default;
    static int interruptCallback(void* self);
    QImage convert(const AVFrame* frame);

    AvFormatInput input_;
    AvCodecContextPtr decoder_;
    AvFramePtr frame_;
    AvPacketPtr packet_;
    SwsContextPtr scaler_;
    int streamIndex_ = -1;
    bool draining_ = false;  // the input ended; the decoder gives out its last frames
    std::atomic<bool> interrupted_{false};
};

}  // namespace orvane
