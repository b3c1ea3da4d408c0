#pragma once

#include <QColor>
#include <algorithm>

#include "document/CodableColor.h"
#include "document/DrawingColor.h"

namespace orvane {

// Document colours (sRGB, components 0 to 1) as Qt colours.
class ColorConvert {
public:
    static QColor from(const CodableColor& c) { return fromComponents(c.red, c.green, c.blue, c.alpha); }
    static QColor from(const DrawingColor& c) { return fromComponents(c.red, c.green, c.blue, c.alpha); }

    static QColor fromComponents(double r, double g, double b, double a) {
        auto clamp = [](double v) { return std::clamp(v, 0.0, 1.0); };
        return QColor::fromRgbF(static_cast<float>(clamp(r)), static_cast<float>(clamp(g)),
                                static_cast<float>(clamp(b)), static_cast<float>(clamp(a)));
    }
};

}  // namespace orvane
