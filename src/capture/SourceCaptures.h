#pragma once

#include <QObject>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "capture/CaptureQuality.h"
#include "capture/SourcePicture.h"
#include "document/Source.h"
#include "document/Uuid.h"

namespace orvane {

class CameraBackend;
class CameraFeed;
class CaptureBackend;
class CaptureHub;
class ScreenCaptureViewModel;

// Live pictures keyed by source: the first ask for a source starts its
// capture, later asks return its latest picture at once. Sources that show
// the same display, window or camera share one capture through the hub.
// This is what the compositor's frame source reads. Main thread.
class SourceCaptures : public QObject {
    Q_OBJECT

public:
    // The backends and the hub must outlive this object.
    SourceCaptures(CaptureBackend& screens, CameraBackend& cameras, CaptureHub& hub, const CaptureQuality& quality,
                   QObject* parent = nullptr);
    ~SourceCaptures() override;

    SourcePicture latestPicture(const Source& source);
    // Restarts every screen and window capture at the new size and rate.
    void setQuality(const CaptureQuality& quality);
    // Stops the captures of sources no longer drawn anywhere.
    void retainOnly(const std::vector<Uuid>& sourceIds);
    int activeCount() const { return static_cast<int>(entries_.size()); }

signals:
    // A source's picture changed; repaint what shows it.
    void pictureChanged(const orvane::Uuid& sourceId);

private:
    struct Entry;
    static std::string signature(const Source& source);
    Entry& entryFor(const Source& source);

    CaptureBackend& screens_;
    CameraBackend& cameras_;
    CaptureHub& hub_;
    CaptureQuality quality_;
    std::map<Uuid, std::unique_ptr<Entry>> entries_;
};

}  // namespace orvane
