#pragma once

#include <functional>
#include <mutex>
#include <unordered_map>

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

    void bindCapture(const Uuid& sourceId, Fetch fetch);
    void bindFrame(const Uuid& sourceId, SourceFrame frame);
    void unbind(const Uuid& sourceId);
    void clear();

    SourceFrame latestFrame(const Source& source) const override;

private:
    struct Binding {
        Fetch fetch;        // a live capture, when set
        SourceFrame fixed;  // otherwise this
    };

    mutable std::mutex mutex_;
    std::unordered_map<Uuid, Binding> bindings_;  // protected by mutex_
};

}  // namespace orvane
