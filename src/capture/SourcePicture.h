#pragma once

#include <QImage>
#include <QString>

namespace orvane {

// What one source shows right now, as the compositor needs it.
struct SourcePicture {
    enum class State {
        idle,      // nothing runs: "No capture" (a camera: a black box)
        starting,  // capturing, no frame yet
        failed,    // `message` says why
        frame,     // `image` is the latest frame
    };

    State state = State::idle;
    QImage image;
    QString message;
};

}  // namespace orvane
