#include "remote/RemoteSnapshotStore.h"

#include <utility>

namespace orvane {

void RemoteSnapshotStore::publish(std::shared_ptr<const RemoteSessionSnapshot> snapshot) {
    std::lock_guard lock(mutex_);
    current_.swap(snapshot);
    // the old snapshot is released outside the lock, when `snapshot` goes
}

std::shared_ptr<const RemoteSessionSnapshot> RemoteSnapshotStore::current() const {
    std::lock_guard lock(mutex_);
    return current_;
}

}  // namespace orvane
