#pragma once

#include <QRectF>

class QPainter;

namespace orvane {

// The texts that stand in for a composition: the program stage while the
// pop-out window shows it, and the pop-out window with nothing on air.
class StagePlaceholders {
public:
    static void paintProgramInPopOut(QPainter& painter, const QRectF& box);
    static void paintNoProgram(QPainter& painter, const QRectF& box);
};

}  // namespace orvane
