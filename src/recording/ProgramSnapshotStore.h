#pragma once

#include <memory>
#include <mutex>

#include "recording/ProgramSnapshot.h"

namespace orvane {

// The hand-off of the latest snapshot from the main thread to the recorder's.
class ProgramSnapshotStore {
public:
    void publish(std::shared_ptr<const ProgramSnapshot> snapshot) {
        std::lock_guard lock(mutex_);
        latest_ = std::move(snapshot);
    }
    std::shared_ptr<const ProgramSnapshot> latest() const {
        std::lock_guard lock(mutex_);
        return latest_;
    }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<const ProgramSnapshot> latest_;  // protected by mutex_
};

}  // namespace orvane
