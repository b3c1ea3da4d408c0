#pragma once

#include <QColor>
#include <QIcon>
#include <string_view>

namespace orvane {

// An icon of one interface symbol, for buttons of the editor.
class SymbolIcon {
public:
    static QIcon make(std::string_view symbol, const QColor& color, int size = 18);
};

}  // namespace orvane
