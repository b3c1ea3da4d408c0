#include "recording/ProgramFrameRelay.h"

#include "capture/LatestFrame.h"
#include "capture/SourceCaptures.h"
#include "engine/StreamManager.h"
#include "recording/LiveFrameTable.h"

namespace orvane {

ProgramFrameRelay::ProgramFrameRelay(StreamManager& session, SourceCaptures& captures,
                                     std::shared_ptr<LiveFrameTable> table, QObject* parent)
    : QObject(parent), session_(&session), captures_(&captures), table_(std::move(table)) {
    connect(&session, &StreamManager::programSceneChanged, this, &ProgramFrameRelay::rebind);
    connect(&captures, &SourceCaptures::feedChanged, this, &ProgramFrameRelay::feedChanged);
    rebind();
}

std::vector<Uuid> ProgramFrameRelay::programSourceIds() const {
    std::vector<Uuid> ids;
    for (const auto& [id, bound] : program_) ids.push_back(id);
    return ids;
}

void ProgramFrameRelay::rebind() {
    for (const auto& [id, bound] : program_) table_->unbind(id);
    program_.clear();
    if (!session_ || !captures_) return;
    const std::optional<StreamingScene>& scene = session_->programScene();
    if (!scene) return;
    for (const Source& source : scene->sources) {
        if (source.type == SourceType::content) continue;  // drawn, not captured
        Bound& bound = program_[source.id];
        bound.source = source;
        bind(bound);
    }
}

void ProgramFrameRelay::bind(Bound& bound) {
    SourceCaptures::Feed feed = captures_->feed(bound.source);
    // The same capture bound again would change nothing but make the
    // recorder draw its next frame anew.
    if (bound.isBound && feed.frames && feed.frames == bound.frames) return;
    bound.isBound = true;
    bound.frames = feed.frames;
    if (!feed.frames) return table_->bindFrame(bound.source.id, std::move(feed.shown));
    // What the capture showed when this was bound is no use later: before
    // its first frame a source shows the state, never an older picture.
    if (feed.shown.state == SourceFrame::State::frame) feed.shown = SourceFrame::startingUp();
    std::shared_ptr<const LatestFrame> frames = feed.frames;
    table_->bindCapture(bound.source.id, [frames] { return frames->read(); }, std::move(feed.shown));
}

void ProgramFrameRelay::feedChanged(const Uuid& sourceId) {
    const auto found = program_.find(sourceId);
    if (found == program_.end() || !captures_) return;
    bind(found->second);
}

}  // namespace orvane
