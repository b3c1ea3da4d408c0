#pragma once

#include <QRectF>

class QPainter;

namespace orvane {

// The picture of a stage with nothing to show: a sketch of an application,
// laid out in proportion to the box. Purely decorative.
class MockStreamContent {
public:
    static void paint(QPainter& painter, const QRectF& box);
};

}  // namespace orvane
