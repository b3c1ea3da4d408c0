#pragma once

#include <QImage>
#include <QString>

#include "document/Source.h"

namespace orvane {

// What is known about one source's live picture at the moment of drawing.
struct SourceFrame {
    enum class State {
        idle,      // nothing started: "No capture" (cameras: a black box)
        starting,  // started, no frame yet: "Starting capture..."
        failed,    // gave up; `message` is the text to show
        frame,     // `image` holds the latest frame
    };

    State state = State::idle;
    QImage image;
    QString message;

    static SourceFrame withImage(QImage image) { return {State::frame, std::move(image), {}}; }
    static SourceFrame failure(QString message) { return {State::failed, {}, std::move(message)}; }
    static SourceFrame startingUp() { return {State::starting, {}, {}}; }
};

// Hands the compositor the latest frame of each source: one capture per
// target, shared by every place that draws it. Called on the main thread
// during painting, so it must return at once; whoever implements it hands
// frames over from the capture threads itself. QImage shares its pixels, so
// returning the latest frame by value copies nothing.
class FrameSource {
public:
    virtual ~FrameSource() = default;

    // Keyed by the source record: its id names the capture, its type and
    // configuration say what the capture is of.
    virtual SourceFrame latestFrame(const Source& source) const = 0;
};

}  // namespace orvane
