#pragma once

#include <QColor>
#include <QFont>

class QApplication;

namespace orvane {

// The console's colours and type sizes, and the dark look of the whole
// application. Sizes are in pixels, one per design point.
namespace Theme {

QColor consoleGround();   // the console's ground, (0.11, 0.13, 0.16)
QColor sidebarGround();   // the side columns, (0.13, 0.15, 0.18)
QColor mockGround();      // the placeholder picture, (0.15, 0.17, 0.2)
QColor purple();
QColor pink();
QColor orange();
QColor green();
QColor red();
QColor blue();
QColor gray();
QColor white(double opacity = 1.0);
QColor black(double opacity = 1.0);
QColor withAlpha(QColor color, double opacity);

enum class Weight { regular, medium, semibold, bold };
QFont font(double pixelSize, Weight weight = Weight::regular);
// Figures that change in place, so that their width does not jump.
QFont monospaceFont(double pixelSize, Weight weight = Weight::regular);

// Dark Fusion palette and the shared style sheet, whatever the desktop says.
void apply(QApplication& app);

}  // namespace Theme
}  // namespace orvane
