#pragma once

#include <QString>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

#include "recording/FfmpegOwners.h"

namespace orvane {

// The hand-off of pictures ready for the encoder from the render thread to
// the encoder thread: a fixed ring of pictures allocated once, so a running
// recording allocates no frame memory and nothing waits without bound.
//
// The render thread takes a free slot, fills it and queues it; the encoder
// thread takes queued slots in order and gives each back once encoded. When
// no slot is free the encoder is behind, and the frame is not drawn at all
// (the caller counts it as dropped). The slot queued last is never handed
// out for filling, so that an unchanged picture can be queued again.
class FrameRing {
public:
    struct Item {
        int slot = -1;
        std::int64_t frameIndex = 0;
    };

    explicit FrameRing(std::size_t slotCount);

    // Empty on success.
    QString allocate(int width, int height, AVPixelFormat format);

    // A slot to fill, or -1 when every slot is queued, being encoded or the
    // last one queued. The slot is the caller's until push() or release().
    int acquire();
    AVFrame* picture(int slot) { return pictures_[static_cast<std::size_t>(slot)].get(); }
    // Queues a filled slot for the frame at frameIndex.
    void push(int slot, std::int64_t frameIndex);
    // Queues the slot pushed last again, for the frame at frameIndex; false
    // when nothing was pushed yet or the queue is full.
    bool repeatLatest(std::int64_t frameIndex);

    // Waits for a queued slot; none once closed and empty, or once stop is
    // requested.
    std::optional<Item> pop(std::stop_token stop);
    // A slot from acquire() or pop() is done with.
    void release(int slot);
    // Wakes pop() when no more pictures will come.
    void close();

    std::size_t slotCount() const { return pictures_.size(); }

private:
    std::vector<AvFrameOwner> pictures_;  // fixed after allocate()
    std::mutex mutex_;
    std::condition_variable_any ready_;
    std::vector<int> uses_;     // per slot: being filled, queued or being encoded; protected by mutex_
    std::deque<Item> queue_;    // never longer than the slot count; protected by mutex_
    int latest_ = -1;           // protected by mutex_
    bool closed_ = false;       // protected by mutex_
};

}  // namespace orvane
