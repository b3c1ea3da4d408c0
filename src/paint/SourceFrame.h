#pragma once

#include <QImage>
#include <QString>

namespace orvane {

// What one source shows right now: its latest captured picture, or why there
// is none. The capture layer hands it out and the compositor draws it, so
// it is the one type on the way from a capture to the screen and the file.
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

}  // namespace orvane
