#include "recording/LiveFrameTable.h"

namespace orvane {

void LiveFrameTable::bindCapture(const Uuid& sourceId, Fetch fetch) {
    std::lock_guard lock(mutex_);
    bindings_[sourceId] = Binding{std::move(fetch), {}};
}

void LiveFrameTable::bindFrame(const Uuid& sourceId, SourceFrame frame) {
    std::lock_guard lock(mutex_);
    bindings_[sourceId] = Binding{{}, std::move(frame)};
}

void LiveFrameTable::unbind(const Uuid& sourceId) {
    std::lock_guard lock(mutex_);
    bindings_.erase(sourceId);
}

void LiveFrameTable::clear() {
    std::lock_guard lock(mutex_);
    bindings_.clear();
}

SourceFrame LiveFrameTable::latestFrame(const Source& source) const {
    Fetch fetch;
    {
        std::lock_guard lock(mutex_);
        const auto found = bindings_.find(source.id);
        if (found == bindings_.end()) return {};
        if (!found->second.fetch) return found->second.fixed;
        fetch = found->second.fetch;
    }
    // Outside the lock: the capture has a lock of its own.
    CapturedFrame frame = fetch();
    if (frame.sequence == 0 || frame.image.isNull()) return SourceFrame::startingUp();
    return SourceFrame::withImage(std::move(frame.image));
}

}  // namespace orvane
