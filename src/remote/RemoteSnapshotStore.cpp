#include "remote/RemoteSnapshotStore.h"

#include <utility>

namespace orvane {

RemoteSnapshotStore::RemoteSnapshotStore() : current_(RemotePublishedSession::make(nullptr)) {}

void RemoteSnapshotStore::publish(std::shared_ptr<const RemoteSessionSnapshot> snapshot) {
    auto next = RemotePublishedSession::make(std::move(snapshot));
    std::lock_guard lock(mutex_);
    current_.swap(next);
    // the old one is released outside the lock, when `next` goes
}

std::shared_ptr<const RemotePublishedSession> RemoteSnapshotStore::current() const {
    std::lock_guard lock(mutex_);
    return current_;
}

}  // namespace orvane
