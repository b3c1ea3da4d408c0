#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <string_view>

class QPainter;

namespace orvane {

// Draws the symbols of the interface with the Material Icons font. The font
// is loaded once from Debian's fonts-material-design-icons-iconfont; when it
// is missing, the check mark is drawn as a path and other symbols as a small
// outlined square, so nothing depends on the font being installed.
class SymbolPainter {
public:
    static constexpr const char* kFontPath =
        "/usr/share/fonts/truetype/material-design-icons-iconfont/MaterialIcons-Regular.ttf";

    // Whether the icon font is loaded (needs a QGuiApplication).
    static bool fontAvailable();

    // The icon font at a pixel size, for painters of any device.
    static QFont font(double pixelSize);

    // Draws `symbol` centred on `centre` in a square of `size` points.
    static void draw(QPainter& painter, std::string_view symbol, QPointF centre, double size, const QColor& color);
};

}  // namespace orvane
