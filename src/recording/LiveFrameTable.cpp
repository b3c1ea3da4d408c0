#include "recording/LiveFrameTable.h"

namespace orvane {

void LiveFrameTable::bindCapture(const Uuid& sourceId, Fetch fetch, SourceFrame beforeFirstFrame) {
    std::lock_guard lock(mutex_);
    bindings_[sourceId] = Binding{std::move(fetch), std::move(beforeFirstFrame)};
    ++bindingChanges_;
}

void LiveFrameTable::bindFrame(const Uuid& sourceId, SourceFrame frame) {
    std::lock_guard lock(mutex_);
    bindings_[sourceId] = Binding{{}, std::move(frame)};
    ++bindingChanges_;
}

void LiveFrameTable::unbind(const Uuid& sourceId) {
    std::lock_guard lock(mutex_);
    if (bindings_.erase(sourceId)) ++bindingChanges_;
}

void LiveFrameTable::clear() {
    std::lock_guard lock(mutex_);
    bindings_.clear();
    ++bindingChanges_;
}

SourceFrame LiveFrameTable::latestFrame(const Source& source) const {
    Fetch fetch;
    SourceFrame beforeFirstFrame;
    {
        std::lock_guard lock(mutex_);
        const auto found = bindings_.find(source.id);
        if (found == bindings_.end()) return {};
        if (!found->second.fetch) return found->second.fixed;
        fetch = found->second.fetch;
        beforeFirstFrame = found->second.fixed;
    }
    // Outside the lock: the capture has a lock of its own.
    CapturedFrame frame = fetch();
    if (frame.sequence == 0 || frame.image.isNull()) return beforeFirstFrame;
    return SourceFrame::withImage(std::move(frame.image));
}

std::uint64_t LiveFrameTable::generation() const {
    std::vector<Fetch> fetches;
    std::uint64_t generation = 0;
    {
        std::lock_guard lock(mutex_);
        generation = bindingChanges_;
        for (const auto& [id, binding] : bindings_)
            if (binding.fetch) fetches.push_back(binding.fetch);
    }
    // Every capture's sequence, mixed in the map's order (which holds while
    // no binding changes, and a change counts above).
    for (const Fetch& fetch : fetches) {
        std::uint64_t x = generation ^ (fetch().sequence + 0x9e3779b97f4a7c15ULL);
        x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
        x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
        generation = x ^ (x >> 31);
    }
    return generation;
}

}  // namespace orvane
