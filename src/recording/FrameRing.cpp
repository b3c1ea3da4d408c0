#include "recording/FrameRing.h"

namespace orvane {

FrameRing::FrameRing(std::size_t slotCount) : pictures_(slotCount), uses_(slotCount, 0) {}

QString FrameRing::allocate(int width, int height, AVPixelFormat format) {
    for (AvFrameOwner& picture : pictures_) {
        picture.reset(av_frame_alloc());
        if (!picture) return QStringLiteral("Out of memory");
        picture->format = format;
        picture->width = width;
        picture->height = height;
        if (const int allocated = av_frame_get_buffer(picture.get(), 0); allocated < 0) return avErrorText(allocated);
    }
    return {};
}

int FrameRing::acquire() {
    std::lock_guard lock(mutex_);
    if (queue_.size() >= pictures_.size()) return -1;
    for (std::size_t slot = 0; slot < pictures_.size(); ++slot) {
        if (uses_[slot] != 0 || static_cast<int>(slot) == latest_ || !pictures_[slot]) continue;
        uses_[slot] = 1;
        return static_cast<int>(slot);
    }
    return -1;
}

void FrameRing::push(int slot, std::int64_t frameIndex) {
    {
        std::lock_guard lock(mutex_);
        // The filling's use passes to the queue.
        queue_.push_back(Item{slot, frameIndex});
        latest_ = slot;
    }
    ready_.notify_one();
}

bool FrameRing::repeatLatest(std::int64_t frameIndex) {
    {
        std::lock_guard lock(mutex_);
        if (latest_ < 0 || queue_.size() >= pictures_.size() || closed_) return false;
        ++uses_[static_cast<std::size_t>(latest_)];
        queue_.push_back(Item{latest_, frameIndex});
    }
    ready_.notify_one();
    return true;
}

std::optional<FrameRing::Item> FrameRing::pop(std::stop_token stop) {
    std::unique_lock lock(mutex_);
    ready_.wait(lock, stop, [this] { return !queue_.empty() || closed_; });
    if (queue_.empty()) return std::nullopt;
    const Item item = queue_.front();
    queue_.pop_front();
    return item;
}

void FrameRing::release(int slot) {
    std::lock_guard lock(mutex_);
    if (slot >= 0 && static_cast<std::size_t>(slot) < uses_.size() && uses_[static_cast<std::size_t>(slot)] > 0)
        --uses_[static_cast<std::size_t>(slot)];
}

void FrameRing::close() {
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
    }
    ready_.notify_all();
}

}  // namespace orvane
