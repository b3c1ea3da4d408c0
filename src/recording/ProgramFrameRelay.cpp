#include "recording/ProgramFrameRelay.h"

#include "capture/SourceCaptures.h"
#include "engine/StreamManager.h"
#include "recording/LiveFrameTable.h"

namespace orvane {

namespace {

SourceFrame frameOf(const SourcePicture& picture) {
    switch (picture.state) {
    case SourcePicture::State::idle: return {};
    case SourcePicture::State::starting: return SourceFrame::startingUp();
    case SourcePicture::State::failed: return SourceFrame::failure(picture.message);
    case SourcePicture::State::frame: return SourceFrame::withImage(picture.image);
    }
    return {};
}

}  // namespace

ProgramFrameRelay::ProgramFrameRelay(StreamManager& session, SourceCaptures& captures,
                                     std::shared_ptr<LiveFrameTable> table, QObject* parent)
    : QObject(parent), session_(&session), captures_(&captures), table_(std::move(table)) {
    connect(&session, &StreamManager::programSceneChanged, this, &ProgramFrameRelay::rebind);
    connect(&captures, &SourceCaptures::pictureChanged, this, &ProgramFrameRelay::refresh);
    rebind();
}

std::vector<Uuid> ProgramFrameRelay::programSourceIds() const {
    std::vector<Uuid> ids;
    for (const auto& [id, source] : program_) ids.push_back(id);
    return ids;
}

void ProgramFrameRelay::rebind() {
    for (const auto& [id, source] : program_) table_->unbind(id);
    program_.clear();
    if (!session_ || !captures_) return;
    const std::optional<StreamingScene>& scene = session_->programScene();
    if (!scene) return;
    for (const Source& source : scene->sources) {
        if (source.type == SourceType::content) continue;  // drawn, not captured
        program_[source.id] = source;
        table_->bindFrame(source.id, frameOf(captures_->latestPicture(source)));
    }
}

void ProgramFrameRelay::refresh(const Uuid& sourceId) {
    const auto found = program_.find(sourceId);
    if (found == program_.end() || !captures_) return;
    table_->bindFrame(sourceId, frameOf(captures_->latestPicture(found->second)));
}

}  // namespace orvane
