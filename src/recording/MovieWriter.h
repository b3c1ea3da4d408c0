#pragma once

#include <QString>

#include <atomic>
#include <functional>
#include <mutex>

#include "recording/FfmpegOwners.h"
#include "recording/OutputFormat.h"

namespace orvane {

// The container of one recording. Streams are added before open(); packets
// then arrive from the video encoder's thread and the audio threads at once.
// Fragmented: every key frame starts a fragment that is complete on disk, so
// a process that dies leaves a file that plays up to the last fragment.
//
// A write that fails is remembered; the first failure's text stays readable
// and every later packet is dropped.
class MovieWriter {
public:
    // Empty on success.
    QString create(const QString& path, OutputFormat format);
    // Adds a stream described by an opened encoder; returns its index or -1.
    int addStream(const AVCodecContext& encoder);
    QString open();

    // Takes the packet's contents; its pts and dts are in the encoder's time
    // base, which the writer rescales to the stream's.
    void writePacket(int streamIndex, AVRational encoderTimeBase, AVPacket* packet);
    // Writes the index and closes the file. Empty on success.
    QString finish();

    // Called once, on the writing thread, when a write first fails.
    void setFailureHandler(std::function<void(const QString&)> handler) { onFailure_ = std::move(handler); }

    bool hasFailed() const { return failed_.load(); }
    QString failure() const;

private:
    std::function<void(const QString&)> onFailure_;  // set before open()
    mutable std::mutex mutex_;
    AvOutput output_;         // protected by mutex_ once open() returned
    bool headerWritten_ = false;  // protected by mutex_
    bool finished_ = false;       // protected by mutex_
    QString failure_;             // protected by mutex_
    std::atomic<bool> failed_{false};
};

}  // namespace orvane
