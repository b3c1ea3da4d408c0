#pragma once

#include <memory>
#include <mutex>

#include "remote/RemotePublishedSession.h"

namespace orvane {

// Hands the latest session snapshot from the main thread to the server
// thread. Readers keep their own reference, so a publish never waits for a
// request and a request never sees a half-built snapshot.
class RemoteSnapshotStore {
public:
    RemoteSnapshotStore();

    // Serialises the read replies on the calling thread, then swaps.
    void publish(std::shared_ptr<const RemoteSessionSnapshot> snapshot);
    std::shared_ptr<const RemotePublishedSession> current() const;

private:
    mutable std::mutex mutex_;
    // protected by mutex_; never null
    std::shared_ptr<const RemotePublishedSession> current_;
};

}  // namespace orvane
