#pragma once

#include <QSize>

#include "composition/SceneRenderer.h"

class QPainter;

namespace orvane {

struct ProgramSnapshot;

// Paints the program output as the pop-out window shows it: black, then the
// program scene's composition (as program output, so blur applies), or the
// "No Program Active" card when there is no program scene; the drawing on
// top while drawing mode is on. One painter per surface: it keeps the
// composition's motion from frame to frame.
class ProgramFramePainter {
public:
    void paint(QPainter& painter, QSize canvas, const ProgramSnapshot& snapshot, double now);
    // Whether the picture moves at `now` by itself (zoom, blur fade, a page
    // turning), so that it must be drawn again even when nothing else changed.
    bool isAnimating(double now) const { return renderer_.isAnimating(now); }

private:
    static void paintNoProgram(QPainter& painter, QSize canvas);

    SceneRenderer renderer_;
};

}  // namespace orvane
