#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include <cstdint>

namespace orvane {

// A display or window resolved from a source, with everything that makes
// its stream differ from another one: views that resolve to equal targets
// share one capture.
struct CaptureTarget {
    enum class Kind { display = 1, window };

    Kind kind = Kind::display;
    std::uint32_t id = 0;
    QSize outputSize;         // every frame has exactly this size
    int framesPerSecond = 15;
    QRect cursorRegion;       // screen rectangle; empty: the cursor is never drawn

    QString key() const;
};

}  // namespace orvane
