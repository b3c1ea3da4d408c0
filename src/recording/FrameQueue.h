#pragma once

#include <QImage>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

namespace orvane {

// The hand-off of composed pictures from the render thread to the encoder
// thread: a few slots deep, never more. A picture that finds the queue full
// is refused (the caller counts it as dropped). Spent pictures come back for
// reuse, so a running recording allocates no frame memory.
class FrameQueue {
public:
    struct Item {
        QImage image;
        std::int64_t frameIndex = 0;
    };

    explicit FrameQueue(std::size_t capacity, QSize size);

    // A picture of the queue's size to draw into.
    QImage takeBuffer();
    void recycle(QImage image);
    // False when full; the image then goes back to the spare pictures.
    bool push(QImage image, std::int64_t frameIndex);
    // Waits for a picture; none once stop is requested and the queue is empty.
    std::optional<Item> pop(std::stop_token stop);
    // Wakes pop() when no more pictures will come.
    void close();

private:
    const std::size_t capacity_;
    const QSize size_;
    std::mutex mutex_;
    std::condition_variable_any ready_;
    std::deque<Item> items_;     // protected by mutex_
    std::vector<QImage> spare_;  // protected by mutex_
    bool closed_ = false;        // protected by mutex_
};

}  // namespace orvane
