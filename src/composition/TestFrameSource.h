#pragma once

#include <QImage>
#include <unordered_map>

#include "composition/FrameSource.h"
#include "document/Uuid.h"

namespace orvane {

// A frame source that hands out fixed frames and states, for tests, the
// benchmark and the contact sheet. Sources it was told nothing about are idle.
class TestFrameSource : public FrameSource {
public:
    void setFrame(const Uuid& sourceId, QImage image);
    void setState(const Uuid& sourceId, SourceFrame frame);
    void clear(const Uuid& sourceId);

    SourceFrame latestFrame(const Source& source) const override;

    // A recognisable picture: a colour field with a grid and a diagonal, so
    // that placement, scaling and cropping show in a rendered image.
    static QImage patternFrame(QSize size, QColor base);

private:
    std::unordered_map<Uuid, SourceFrame> frames_;
};

}  // namespace orvane
