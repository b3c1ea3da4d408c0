#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "capture/CapturedFrame.h"
#include "composition/FrameSource.h"
#include "document/Uuid.h"

namespace orvane {

// A frame source that answers from any thread, for the recorder's thread:
// each source id is bound to a fixed picture or state, or to a function that
// returns a running capture's latest frame (a shared capture's latestFrame()
// is safe to call from anywhere). Bindings change on the main thread when
// the program scene does; the recorder reads them at every frame.
class LiveFrameTable : public FrameSource {
public:
    using Fetch = std::function<CapturedFrame()>;

    // Until the capture's first frame the source shows `beforeFirstFrame`.
    void bindCapture(const Uuid& sourceId, Fetch fetch, SourceFrame beforeFirstFrame = SourceFrame::startingUp());
    void bindFrame(const Uuid& sourceId, SourceFrame frame);
    void unbind(const Uuid& sourceId);
    void clear();

    SourceFrame latestFrame(const Source& source) const override;

    // A number that changes whenever any source may show something new: a
    // binding changed or a bound capture has a newer frame. Equal numbers
    // mean that every source shows what it showed before.
    std::uint64_t generation() const;

private:
    struct Binding {
        Fetch fetch;        // a live capture, when set
        SourceFrame fixed;  // otherwise this; with a capture, what it shows before its first frame
    };

    mutable std::mutex mutex_;
    std::unordered_map<Uuid, Binding> bindings_;  // protected by mutex_
    std::uint64_t bindingChanges_ = 0;            // protected by mutex_
};

}  // namespace orvane
