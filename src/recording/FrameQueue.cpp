#include "recording/FrameQueue.h"

namespace orvane {

FrameQueue::FrameQueue(std::size_t capacity, QSize size) : capacity_(capacity), size_(size) {}

QImage FrameQueue::takeBuffer() {
    {
        std::lock_guard lock(mutex_);
        if (!spare_.empty()) {
            QImage image = std::move(spare_.back());
            spare_.pop_back();
            return image;
        }
    }
    // RGB32 is B, G, R, 255 in memory: the encoder's input as it stands.
    return QImage(size_, QImage::Format_RGB32);
}

void FrameQueue::recycle(QImage image) {
    std::lock_guard lock(mutex_);
    if (spare_.size() < capacity_ + 2) spare_.push_back(std::move(image));
}

bool FrameQueue::push(QImage image, std::int64_t frameIndex) {
    {
        std::lock_guard lock(mutex_);
        if (items_.size() >= capacity_ || closed_) {
            if (spare_.size() < capacity_ + 2) spare_.push_back(std::move(image));
            return false;
        }
        items_.push_back(Item{std::move(image), frameIndex});
    }
    ready_.notify_one();
    return true;
}

std::optional<FrameQueue::Item> FrameQueue::pop(std::stop_token stop) {
    std::unique_lock lock(mutex_);
    ready_.wait(lock, stop, [this] { return !items_.empty() || closed_; });
    if (items_.empty()) return std::nullopt;
    Item item = std::move(items_.front());
    items_.pop_front();
    return item;
}

void FrameQueue::close() {
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
    }
    ready_.notify_all();
}

}  // namespace orvane
