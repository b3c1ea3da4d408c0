#pragma once

#include <QString>

#include <map>
#include <memory>

#include "capture/CapturedFrame.h"
#include "capture/SharedCapture.h"

namespace orvane {

// The registry of running captures, one per target key. Views hold the
// shared pointer it hands out; the capture stops when the last one goes.
// Main thread only.
class CaptureHub {
public:
    CaptureHub() = default;
    CaptureHub(const CaptureHub&) = delete;
    CaptureHub& operator=(const CaptureHub&) = delete;

    // The running capture for key, or a new one opened with opener. A
    // capture that has failed is never handed out again: its holders are
    // letting go of it, and the caller gets a fresh one. A new capture is
    // logged unless `announce` is false (a retry of a failed one, which
    // logs its outcome itself).
    std::shared_ptr<SharedCapture> acquire(const QString& key, int framesPerSecond, SharedCapture::Opener opener,
                                           bool announce = true);

    // The latest picture of a running capture; a null image when none runs
    // under that key or no frame has arrived yet.
    CapturedFrame latestFrame(const QString& key) const;
    std::shared_ptr<SharedCapture> find(const QString& key) const;
    int runningCount() const;

private:
    std::map<QString, std::weak_ptr<SharedCapture>> captures_;
};

}  // namespace orvane
