#pragma once

#include <QObject>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "capture/CaptureQuality.h"
#include "document/Source.h"
#include "document/Uuid.h"
#include "paint/SourceFrame.h"

namespace orvane {

class CameraBackend;
class CameraFeed;
class CaptureBackend;
class CaptureHub;
class LatestFrame;
class ScreenCaptureViewModel;

// Live pictures keyed by source: the first ask for a source sets its
// capture going on the next turn of the event loop (so an ask from inside
// a signal handler never opens anything, and a capture that fails at once
// cannot call back into the ask), and returns "starting"; later asks return
// its latest picture at once. A failed capture stays failed, showing its
// message, while it is tried again with growing delays. Sources that show
// the same display, window or camera share one capture through the hub.
// This is what the compositor's frame source reads. Main thread.
//
// A reader on another thread (the recorder) asks for a source's feed
// instead: the running capture's frames, which it then reads itself, or the
// state to show while none runs. Feeds change on feedChanged only, never
// per frame.
class SourceCaptures : public QObject {
    Q_OBJECT

public:
    struct Feed {
        // The source's picture now; while `frames` is set, what to show
        // until its capture has a first frame.
        SourceFrame shown;
        // The running capture's frames; none while the source is not
        // captured, not started yet or failed.
        std::shared_ptr<const LatestFrame> frames;
    };

    // The backends and the hub must outlive this object.
    SourceCaptures(CaptureBackend& screens, CameraBackend& cameras, CaptureHub& hub, const CaptureQuality& quality,
                   QObject* parent = nullptr);
    ~SourceCaptures() override;

    SourceFrame latestFrame(const Source& source);
    Feed feed(const Source& source);
    // Restarts every screen and window capture at the new size and rate, on
    // the next turn of the event loop.
    void setQuality(const CaptureQuality& quality);
    // Stops the captures of sources no longer drawn anywhere.
    void retainOnly(const std::vector<Uuid>& sourceIds);
    int activeCount() const { return static_cast<int>(entries_.size()); }

public slots:
    // What can be captured changed (a monitor, a window or a camera came or
    // went): failed captures try again soon instead of at their next delay.
    void retryFailedNow();

signals:
    // A source's picture changed; repaint what shows it.
    void pictureChanged(const orvane::Uuid& sourceId);
    // What feed() gives for the source may have changed: its capture
    // started, stopped, failed, recovered or was replaced. Queued, so it
    // never arrives from inside a call of ours.
    void feedChanged(const orvane::Uuid& sourceId);

private:
    struct Entry;
    static std::string signature(const Source& source);
    Entry& entryFor(const Source& source);
    // The entry's picture, the one place its states map onto a frame.
    static SourceFrame frameOf(const Entry& entry);
    void queueFeedChanged(const Uuid& sourceId);
    // Starts every entry not yet started, on the next turn of the event loop.
    void queueStart();
    void startPending();

    CaptureBackend& screens_;
    CameraBackend& cameras_;
    CaptureHub& hub_;
    CaptureQuality quality_;
    std::map<Uuid, std::unique_ptr<Entry>> entries_;
    bool startQueued_ = false;  // a startPending() call is on its way
};

}  // namespace orvane
