#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <functional>
#include <string>

class QPainter;

namespace orvane::test {

// Renders into a fresh image on opaque black, as a stage would.
QImage renderImage(QSize size, const std::function<void(QPainter&)>& paint, QColor fill = Qt::black);

// Whether two colours agree within `tolerance` per channel (0 to 255).
bool near(QColor actual, QColor expected, int tolerance = 3);

std::string describe(QColor c);

// Writes the image when ORVANE_TEST_IMAGES names a directory, so that a
// person can look at what a test drew.
void keep(const QImage& image, const std::string& name);

}  // namespace orvane::test
