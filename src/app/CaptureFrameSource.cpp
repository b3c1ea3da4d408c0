#include "CaptureFrameSource.h"

#include "capture/SourceCaptures.h"

namespace orvane {

SourceFrame CaptureFrameSource::latestFrame(const Source& source) const {
    SourcePicture picture = captures_.latestPicture(source);
    switch (picture.state) {
    case SourcePicture::State::idle: return {};
    case SourcePicture::State::starting: return SourceFrame::startingUp();
    case SourcePicture::State::failed: return SourceFrame::failure(std::move(picture.message));
    case SourcePicture::State::frame: return SourceFrame::withImage(std::move(picture.image));
    }
    return {};
}

}  // namespace orvane
