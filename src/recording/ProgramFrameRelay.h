#pragma once

#include <QObject>
#include <QPointer>

#include <memory>
#include <unordered_map>
#include <vector>

#include "document/Source.h"
#include "document/Uuid.h"

namespace orvane {

class LatestFrame;
class LiveFrameTable;
class SourceCaptures;
class StreamManager;

// Keeps a LiveFrameTable bound to the program scene's sources, from the
// console's shared captures: the first ask starts a source's capture, and
// a running capture is bound by its latest-frame slot, which the recorder's
// thread reads directly. So frames reach the recording without the main
// thread; the main thread only rebinds a source when the program changes or
// its capture starts, fails, recovers or is replaced (SourceCaptures'
// feedChanged), and binds the state to show while no capture runs.
//
// The captures must keep running while the program shows them: whoever
// calls SourceCaptures::retainOnly includes programSourceIds().
class ProgramFrameRelay : public QObject {
    Q_OBJECT

public:
    ProgramFrameRelay(StreamManager& session, SourceCaptures& captures, std::shared_ptr<LiveFrameTable> table,
                      QObject* parent = nullptr);

    std::vector<Uuid> programSourceIds() const;

private:
    struct Bound {
        Source source;
        std::shared_ptr<const LatestFrame> frames;  // the capture bound, if any
        bool isBound = false;
    };

    void rebind();
    void bind(Bound& bound);
    void feedChanged(const Uuid& sourceId);

    QPointer<StreamManager> session_;
    QPointer<SourceCaptures> captures_;
    std::shared_ptr<LiveFrameTable> table_;
    std::unordered_map<Uuid, Bound> program_;  // the program scene's captured sources by id
};

}  // namespace orvane
